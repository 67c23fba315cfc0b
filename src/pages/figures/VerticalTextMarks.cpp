#include "pages/figures/VerticalTextMarks.h"

#include "base/Text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kColumnWidth = 16;
constexpr double kColumnSpacing = 6;
constexpr double kCharacterHeight = 17;
constexpr TextFace kFace{TextFamily::system, 14};
constexpr double kOpacity = 0.45;

Rect columnRect(std::size_t column, std::size_t characters)
{
    return {static_cast<double>(column) * (kColumnWidth + kColumnSpacing), 0, kColumnWidth,
        static_cast<double>(characters) * kCharacterHeight};
}

std::vector<std::string> charactersOf(std::string_view text)
{
    std::vector<std::string> characters;
    while (!text.empty()) {
        const std::string_view first = firstCharacters(text, 1);
        characters.emplace_back(first);
        text.remove_prefix(first.size());
    }
    return characters;
}

} // namespace

std::vector<Mark> verticalTextMarks(std::span<const std::string> lines)
{
    std::vector<Mark> marks;
    for (const std::string& line : lines) {
        const std::vector<std::string> characters = charactersOf(line);
        const Rect column = columnRect(marks.size(), characters.size());
        Mark mark{.shape = Box{column}, .role = MarkRole::text, .name = line};
        Rect place{column.x, column.y, column.width, kCharacterHeight};
        for (const std::string& character : characters) {
            mark.texts.push_back({.place = place,
                .text = character,
                .face = kFace,
                .tint = secondaryTint(kOpacity),
                .alignment = TextAlignment::center});
            place.y += kCharacterHeight;
        }
        marks.push_back(std::move(mark));
    }
    return marks;
}

Size verticalTextSize(std::span<const std::string> lines)
{
    Size size;
    for (const Mark& column : verticalTextMarks(lines)) {
        const Rect rect = bounds(column.shape);
        size = {std::max(size.width, right(rect)), std::max(size.height, bottom(rect))};
    }
    return size;
}

} // namespace quillbrook
