#pragma once

#include <cstdint>
#include <string>

namespace quillbrook {

/// Where the program shows itself among those that run.
enum class ActivationPolicy : std::uint8_t {
    regular, ///< like any program with windows
    accessory, ///< in the menu bar only
};

/// A question with two answers, or word with one.
struct Alert {
    std::string message{};
    std::string informativeText{};
    std::string firstButton{};
    std::string secondButton{}; // empty for none
    bool isGrave = true; // in how it looks
};

enum class AlertAnswer : std::uint8_t {
    firstButton,
    secondButton, ///< also when the alert was closed without an answer
};

/// The running program as the desktop sees it. Main thread only.
class Application {
public:
    virtual ~Application() = default;

    /// macOS: the application's activation policy; Linux: follows from the windows that are open,
    /// so that there is nothing to do.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Makes the window, told by the system's number of it, the one that gets the keys at the next
    /// `activate`.
    virtual void makeKey(std::uint64_t window) = 0;

    /// Brings the program's windows before those of all others, as far as the desktop lets it.
    virtual void activate() = 0;

    /// Shows the alert and waits for the answer, while timers go on.
    virtual AlertAnswer runAlert(const Alert& alert) = 0;

    /// Shows the folder of applications, /Applications, in the desktop's file manager.
    virtual void openApplicationsDirectory() = 0;
};

} // namespace quillbrook
