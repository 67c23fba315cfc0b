#pragma once

#include <string_view>

namespace quillbrook {

/// Tells on standard error, in one line, what of the desktop is missing, came back or failed.
/// The recorder's log is the engine's alone. Any thread.
void notice(std::string_view text);

} // namespace quillbrook
