#pragma once

#include "platform/HumanInput.h"
#include "platform/WindowActivation.h"
#include "platform/Workspace.h"

#include <optional>
#include <string>

namespace quillbrook {

/// What the display of the session knows: an X server or a Wayland compositor, with what stands
/// beside it. Main thread only.
class DisplaySession : public HumanInput, public WindowActivation {
public:
    /// The application in front, if any is known. Waits for nobody.
    virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// The identifier of the keyboard's layout, if it is known.
    virtual std::optional<std::string> layoutIdentifier() const = 0;
};

} // namespace quillbrook
