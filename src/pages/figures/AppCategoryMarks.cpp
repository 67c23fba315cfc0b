#include "pages/figures/AppCategoryMarks.h"

#include "base/Text.h"
#include "pages/figures/HabitFigures.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

// An application's row.
constexpr double kRowPadding = 10; // at both sides
constexpr double kRowRadius = 6;
constexpr double kTile = 32;
constexpr double kTileTop = 4;
constexpr double kTileOpacity = 0.15;
constexpr double kTextLeft = 56; // of the texts and of the divider under them
constexpr double kLineGap = 2;
constexpr double kTrailingGap = 6;
constexpr double kPerson = 11;
constexpr double kAppDot = 8;
constexpr double kLongestLabel = 140;
constexpr TextFace kInitialsFace{TextFamily::system, 12, TextWeight::medium};
constexpr TextFace kNameFace{TextFamily::system, 13, TextWeight::medium};
constexpr TextFace kBundleFace{TextFamily::system, 9};
constexpr TextFace kLabelFace{TextFamily::system, 12};

// A category's row.
constexpr double kSidePadding = 20;
constexpr double kCategoryDot = 12;
constexpr double kBehindDot = 10;
constexpr double kCheckmark = 14;
constexpr double kCurrentDot = 10;
constexpr double kBehindCurrentDot = 8;
constexpr TextFace kCategoryFace{TextFamily::system, 14};

Tint categoryTint(std::string_view key)
{
    return {colorFromHex(categoryColorHex(key))};
}

std::string_view keyOf(const SelectableCategory& category)
{
    const auto* const seed = std::ranges::find(categorySeedTable, category.id, &CategorySeed::id);
    return seed == categorySeedTable.end() ? std::string_view() : seed->key;
}

/// A dot whose left edge and middle are given.
Mark dotMark(double left, double middle, double diameter, Tint tint)
{
    return {.shape = Circle{{left + diameter / 2, middle}, diameter / 2}, .fills = {tint}};
}

/// A divider from `left` on, at the foot of a row.
Mark dividerMark(double left, Size size)
{
    const double y = size.height - 0.5;
    return lineMark({left, y}, {size.width, y}, {InterfaceColor::separator});
}

Mark tileMark(const AppEntry& app)
{
    const Rect place{kRowPadding, kTileTop, kTile, kTile};
    Mark tile = boxMark(place, {InterfaceColor::accent, kTileOpacity}, kRowRadius);
    tile.texts.push_back({.place = place,
        .text = std::string(firstCharacters(app.appName, 2)),
        .face = kInitialsFace,
        .alignment = TextAlignment::center,
        .minimumScale = 0.7});
    return tile;
}

std::string spokenValue(const AppEntry& app)
{
    return app.bundleId + ", " + app.categoryLabel + (app.hasUserOverride ? ", 自选" : "");
}

} // namespace

std::vector<Mark> appRowMarks(
    const AppEntry& app, bool isLast, Size size, const TextWidth& textWidth)
{
    const Rect ground{0, 0, size.width, size.height - 1};
    const double middle = center(ground).y;
    Mark row = boxMark(ground, {InterfaceColor::controlBackground}, kRowRadius);
    row.role = MarkRole::row;
    row.name = app.appName;
    row.value = spokenValue(app);

    // From the end to the middle: the person, the label, the dot.
    double end = size.width - kRowPadding;
    const Tint labelTint = app.hasUserOverride ? Tint{InterfaceColor::accent} : secondaryTint();
    if (app.hasUserOverride) {
        row.symbols.push_back({.place = {end - kPerson, middle - kPerson / 2, kPerson, kPerson},
            .symbol = "person.fill",
            .tint = labelTint});
        end -= kPerson + kTrailingGap;
    }
    const double labelWidth = std::min(kLongestLabel, textWidth(app.categoryLabel, kLabelFace));
    const double labelHeight = lineHeight(kLabelFace);
    row.texts.push_back(
        {.place = {end - labelWidth, middle - labelHeight / 2, labelWidth, labelHeight},
            .text = app.categoryLabel,
            .face = kLabelFace,
            .tint = labelTint,
            .alignment = TextAlignment::trailing});
    end -= labelWidth + kTrailingGap + kAppDot;
    const Mark dot = dotMark(end, middle, kAppDot, categoryTint(app.categoryKey));

    const double width = std::max(0.0, end - kTrailingGap - kTextLeft);
    const double height = lineHeight(kNameFace) + kLineGap + lineHeight(kBundleFace);
    const Rect name{kTextLeft, middle - height / 2, width, lineHeight(kNameFace)};
    row.texts.push_back({.place = name, .text = app.appName, .face = kNameFace});
    row.texts.push_back({.place = {name.x, bottom(name) + kLineGap, width, lineHeight(kBundleFace)},
        .text = app.bundleId,
        .face = kBundleFace,
        .tint = secondaryTint()});
    if (textWidth(app.appName, kNameFace) > width || textWidth(app.bundleId, kBundleFace) > width) {
        row.help = app.appName + "\n" + app.bundleId;
    }

    std::vector<Mark> marks{std::move(row), tileMark(app), dot};
    if (!isLast) {
        marks.push_back(dividerMark(kTextLeft, size));
    }
    return marks;
}

std::vector<Mark> categoryRowMarks(
    const SelectableCategory& category, const AppEntry& app, Size size)
{
    const Rect ground{0, 0, size.width, size.height - 1};
    const double middle = center(ground).y;
    const std::string_view key = keyOf(category);
    const bool isChecked = key == app.categoryKey;
    Mark row{.shape = Box{ground},
        .role = MarkRole::button,
        .name = std::string(category.label),
        .value = std::string(isChecked ? kCheckedValue : "")};
    const double left = kSidePadding + kCategoryDot + kBehindDot;
    const double height = lineHeight(kCategoryFace);
    const double end = size.width - kSidePadding;
    row.texts.push_back({.place = {left, middle - height / 2, end - kCheckmark - left, height},
        .text = row.name,
        .face = kCategoryFace});
    if (isChecked) {
        row.symbols.push_back(
            {.place = {end - kCheckmark, middle - kCheckmark / 2, kCheckmark, kCheckmark},
                .symbol = "checkmark",
                .tint = {InterfaceColor::accent}});
    }
    return {std::move(row), dotMark(kSidePadding, middle, kCategoryDot, categoryTint(key)),
        dividerMark(kSidePadding, size)};
}

std::vector<Mark> currentCategoryMarks(const AppEntry& app, Size size)
{
    const double left = kSidePadding + kCurrentDot + kBehindCurrentDot;
    return {dotMark(kSidePadding, size.height / 2, kCurrentDot, categoryTint(app.categoryKey)),
        textMark({.place = {left, 0, size.width - kSidePadding - left, size.height},
            .text = "当前：" + app.categoryLabel,
            .face = kLabelFace,
            .tint = secondaryTint()})};
}

std::string pickerTitle(const AppEntry& app)
{
    return "「" + app.appName + "」的分类";
}

} // namespace quillbrook
