#pragma once

#include "platform/linux/session/FrontSource.h"

#include <optional>
#include <string>

namespace quillbrook {

/// The window in an event that tells of a change of the focus; empty for other events.
std::optional<FrontWindow> focusedWindowOfEvent(const std::string& json);

/// The focused window in the tree of all; empty when none is.
std::optional<FrontWindow> focusedWindowOfTree(const std::string& json);

/// The description of the layout in use, as "English (US)", of the keyboard in an event, or of the
/// first keyboard in a list of inputs; empty when none is told.
std::optional<std::string> layoutOfEvent(const std::string& json);
std::optional<std::string> layoutOfInputs(const std::string& json);

/// Whether sway has done all of a command, by its reply.
bool isDone(const std::string& json);

} // namespace quillbrook
