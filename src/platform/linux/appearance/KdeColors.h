#pragma once

#include "platform/DesktopAppearance.h"

#include <string_view>

namespace quillbrook {

/// What the text of KDE's file "kdeglobals" tells: dark when the background of windows is, and the
/// accent colour. Empty what it doesn't tell.
Appearance kdeAppearanceIn(std::string_view kdeglobals);

} // namespace quillbrook
