#pragma once

#include "platform/Directories.h"

#include <utility>

namespace quillbrook {

/// A data directory wherever it was put.
class VirtualDirectories final : public Directories {
public:
    explicit VirtualDirectories(std::filesystem::path dataDirectory)
        : path(std::move(dataDirectory))
    {
    }

    std::optional<std::filesystem::path> dataDirectory() const override { return path; }

private:
    std::filesystem::path path;
};

} // namespace quillbrook
