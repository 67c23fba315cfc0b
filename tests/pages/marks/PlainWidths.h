#pragma once

#include "pages/marks/Mark.h"

#include <string>
#include <vector>

namespace quillbrook {

/// Letters half as wide as they are high, so that widths can be told by counting: a text of n
/// ASCII characters at 10 pixels is 5n wide.
inline const TextWidth& plainWidths()
{
    static const TextWidth widths = [](std::string_view text, const TextFace& face) {
        return static_cast<double>(text.size()) * face.pixels / 2;
    };
    return widths;
}

inline std::vector<Mark> marksOf(const std::vector<Mark>& marks, MarkRole role)
{
    std::vector<Mark> found;
    for (const Mark& mark : marks) {
        if (mark.role == role) {
            found.push_back(mark);
        }
    }
    return found;
}

inline std::vector<std::string> namesOf(const std::vector<Mark>& marks, MarkRole role)
{
    std::vector<std::string> names;
    for (const Mark& mark : marksOf(marks, role)) {
        names.push_back(mark.name);
    }
    return names;
}

inline bool isWithin(const Rect& rect, Size size)
{
    constexpr double kRounding = 1e-9;
    return rect.x >= -kRounding && rect.y >= -kRounding && right(rect) <= size.width + kRounding
        && bottom(rect) <= size.height + kRounding;
}

inline bool isOverlap(const Rect& one, const Rect& other)
{
    constexpr double kRounding = 1e-9;
    return one.x < right(other) - kRounding && other.x < right(one) - kRounding
        && one.y < bottom(other) - kRounding && other.y < bottom(one) - kRounding;
}

/// Whether all texts lie in the picture and apart from each other.
inline bool isLegible(const std::vector<Mark>& marks, Size size)
{
    const std::vector<Mark> texts = marksOf(marks, MarkRole::text);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Rect rect = bounds(texts[i].shape);
        if (!isWithin(rect, size)) {
            return false;
        }
        for (std::size_t j = 0; j < i; ++j) {
            if (isOverlap(rect, bounds(texts[j].shape))) {
                return false;
            }
        }
    }
    return true;
}

} // namespace quillbrook
