#pragma once

#include <QByteArray>

class QWidget;

namespace quillbrook::lab {

/// What a screen reader finds in a window, as JSON Lines in reading order: role, name, value and
/// rect, for every element with a name or a value.
QByteArray accessibleText(QWidget& window);

/// The same of a window over another one, whose coordinates the places are told in.
QByteArray accessibleText(QWidget& window, const QWidget& base);

} // namespace quillbrook::lab
