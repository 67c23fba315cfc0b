#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace quillbrook {

/// The menu bar's label as a square of so many pixels: the hours over the minutes, in the smallest
/// size one short figure, on a plate of its own, since a panel may be light or dark; the plate is
/// red for a warning.
QPixmap menuBarPixmap(const QString& activeHours, bool isWarning, int size);

/// The same in all the sizes that trays ask for.
QIcon menuBarIcon(const QString& activeHours, bool isWarning);

} // namespace quillbrook
