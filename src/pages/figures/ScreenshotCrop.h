#pragma once

#include "pages/marks/Geometry.h"

#include <algorithm>

namespace quillbrook {

/// The part of a window's content that a shared picture shows: the page without the sidebar.
///
/// What is cut off at the left has the sidebar's ideal width, however wide it is drawn. The part is
/// at least 400 wide, and runs past the right edge of a content that is too narrow for both.
constexpr Rect screenshotCrop(Size content)
{
    constexpr double kSidebar = 220;
    constexpr double kNarrowest = 400;
    return {kSidebar, 0, std::max(content.width - kSidebar, kNarrowest), content.height};
}

} // namespace quillbrook
