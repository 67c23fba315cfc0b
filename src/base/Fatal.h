#pragma once

#include <string_view>

namespace quillbrook {

/// Ends the process by SIGABRT after one line on standard error. For programming faults alone;
/// whatever can happen in use has a behaviour of its own.
[[noreturn]] void fatal(std::string_view reason);

} // namespace quillbrook
