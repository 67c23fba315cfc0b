#pragma once

#include "platform/Workspace.h"
#include "platform/linux/applications/WindowTraits.h"

namespace quillbrook {

class DesktopEntries;

/// The name and identifier under which a window's application is recorded: those of its desktop
/// entry, else its class, else its program's name. Programs that the category rules should know get
/// the identifier that they know. Both are fit to be stored and logged, whatever the window says.
RunningApplication applicationOf(const WindowTraits& traits, DesktopEntries& entries);

/// The desktop itself, which is in front when no window is.
RunningApplication desktopItself();

} // namespace quillbrook
