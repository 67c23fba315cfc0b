#pragma once

#include <optional>
#include <string>

namespace quillbrook {

/// An exception on its way out of the program.
struct UncaughtException {
    std::string name{}; // of its type
    std::optional<std::string> reason{}; // what it says of itself, if it says anything
};

/// The exception that a terminate handler was called for; without name when it was called for
/// another cause.
UncaughtException describeUncaughtException();

/// The stack of the calling thread, a line for each frame, without a newline at the end.
std::string callStackText();

} // namespace quillbrook
