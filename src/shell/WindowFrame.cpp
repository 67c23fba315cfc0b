#include "shell/WindowFrame.h"

#include <QMargins>

#include <algorithm>

namespace quillbrook {

namespace {

constexpr QMargins kDecoration(6, 40, 6, 6);

} // namespace

QRect roomForWindow(const QRect& availableGeometry)
{
    return availableGeometry.marginsRemoved(kDecoration);
}

QRect fittedInto(const QRect& frame, const QRect& room)
{
    QRect fitted(frame.topLeft(), frame.size().boundedTo(room.size()));
    if (fitted.size() != frame.size()) {
        fitted.moveLeft(
            std::clamp(fitted.left(), room.left(), room.left() + room.width() - fitted.width()));
        fitted.moveTop(std::min(fitted.top(), room.top() + room.height() - fitted.height()));
    }
    fitted.moveTop(std::max(fitted.top(), room.top()));
    return fitted;
}

} // namespace quillbrook
