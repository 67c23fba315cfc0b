#pragma once

#include <string>

namespace quillbrook {

/// Holds what is written on standard error, by whomever, as long as it lives: libraries write there
/// past every handler. Afterwards it is let out. Without descriptors to spare nothing is held.
/// One at a time; main thread only.
class HeldErrors {
public:
    HeldErrors();
    ~HeldErrors();

    HeldErrors(const HeldErrors&) = delete;
    HeldErrors& operator=(const HeldErrors&) = delete;

    /// What was written so far, of which nothing is let out any more. Ends the holding.
    std::string take();

private:
    int reader = -1;
    int trueErrors = -1;
};

} // namespace quillbrook
