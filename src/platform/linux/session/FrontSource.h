#pragma once

#include "platform/linux/applications/WindowTraits.h"

#include <sys/types.h>

#include <optional>

namespace quillbrook {

/// What a desktop tells of the window in front.
struct FrontWindow {
    WindowTraits traits{};
    pid_t process = 0; // 0 when the desktop doesn't tell

    bool operator==(const FrontWindow&) const = default;
};

/// Somebody who may know which window is in front, and may come and go.
class FrontSource {
public:
    virtual ~FrontSource() = default;

    /// Whether it knows now. What it says otherwise means nothing.
    virtual bool isThere() const = 0;

    /// The window; empty when none is in front.
    virtual std::optional<FrontWindow> front() const = 0;
};

} // namespace quillbrook
