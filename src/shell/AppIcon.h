#pragma once

#include <QIcon>
#include <QImage>

namespace quillbrook {

/// The program's icon: that of the desktop's theme where it has one, else our own. Needs the
/// application object.
QIcon appIcon();

/// Our own icon for those that want a picture.
QImage appPicture();

} // namespace quillbrook
