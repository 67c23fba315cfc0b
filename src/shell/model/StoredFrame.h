#pragma once

#include <optional>
#include <string_view>

namespace quillbrook {

/// Where a window stood, in points.
struct StoredFrame {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const StoredFrame&) const = default;
};

/// The frame that a text such as "100 80 960 680" tells. Empty when it tells none, or one without
/// an area or beyond the reach of any desktop.
std::optional<StoredFrame> storedFrame(std::string_view text);

} // namespace quillbrook
