#pragma once

#include "base/ConstantText.h"

#include <array>
#include <string_view>

namespace quillbrook {

/// Names under which nobody uses an application: the system's own processes, and this program.
inline constexpr std::array<std::string_view, 6> kSystemNames{
    "loginwindow", "WindowServer", "kernel_task", "launchd", "ScreenSaverEngine", "Quillbrook"};

/// The same, as SQL lists them.
inline constexpr std::string_view kSystemNamesSql = quotedList<kSystemNames>;

} // namespace quillbrook
