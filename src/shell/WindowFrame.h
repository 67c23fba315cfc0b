#pragma once

#include <QRect>

namespace quillbrook {

/// The room that a screen has for the inside of a window. What a window manager puts round it is
/// known only once the window is shown, so a usual title bar and border are left free.
QRect roomForWindow(const QRect& availableGeometry);

/// `frame`, made no larger than `room`, and wholly within it when it was larger. Its upper edge is
/// always within, so that the title bar can be reached.
QRect fittedInto(const QRect& frame, const QRect& room);

} // namespace quillbrook
