#pragma once

#include <string_view>

namespace quillbrook {

/// Where the program says what of the desktop is missing, came back or failed. The recorder's log
/// is the engine's alone. Main thread only.
class Notices {
public:
    virtual ~Notices() = default;

    /// Tells it in one line. On every system a line on standard error.
    virtual void tell(std::string_view text) = 0;
};

} // namespace quillbrook
