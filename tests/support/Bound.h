#pragma once

#include "base/OlderThread.h"
#include "platform/linux/confinement/WritablePlaces.h"
#include "support/InChild.h"

#include <array>
#include <filesystem>
#include <functional>

namespace quillbrook {

/// What `body` returns in a process that has an older thread, and whose other threads write below
/// `folder` alone; 255 where the kernel can't do that.
inline int inBoundChild(const std::filesystem::path& folder, const std::function<int()>& body)
{
    return inChild([&] {
        const std::array places{WritablePlace{.folder = folder}};
        return startOlderThread() && writeOnlyIn(places) ? body() : 255;
    });
}

} // namespace quillbrook
