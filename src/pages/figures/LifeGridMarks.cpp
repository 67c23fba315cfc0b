#include "pages/figures/LifeGridMarks.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kPadding = 12;
constexpr double kSpacing = 4;
constexpr double kHeaderHeight = 30;
constexpr double kCellHeight = 40;
constexpr double kCellRadius = 4;
constexpr double kGroundRadius = 8;
constexpr double kMarkedStroke = 2.5;
constexpr double kPersonSide = 10;
constexpr double kPersonRise = 12; // above the cell's middle
constexpr TextFace kAnimalFace{TextFamily::system, 12};
constexpr TextFace kBranchFace{TextFamily::system, 9};
constexpr TextFace kStemFace{TextFamily::system, 12, TextWeight::medium};
constexpr TextFace kAgeFace{TextFamily::system, 9, TextWeight::medium};
constexpr TextFace kMarkedFace{TextFamily::system, 16, TextWeight::black};
constexpr TextFace kCurrentFace{TextFamily::system, 18, TextWeight::black};

/// A place of the grid; column 0 holds the stems, and row 0 the animals.
Rect gridRect(int row, int column, double width)
{
    constexpr int kColumns = life::columnsPerRow + 1;
    const double cell
        = std::max((width - 2 * kPadding - (kColumns - 1) * kSpacing) / kColumns, 0.0);
    const double x = kPadding + column * (cell + kSpacing);
    if (row == 0) {
        return {x, kPadding, cell, kHeaderHeight};
    }
    const double y = kPadding + kHeaderHeight + kSpacing + (row - 1) * (kCellHeight + kSpacing);
    return {x, y, cell, kCellHeight};
}

Mark headerMark(int column, bool isOfBirth, double width)
{
    const auto& [animal, branch] = life::zodiacWithBranch[static_cast<std::size_t>(column)];
    const Rect rect = gridRect(0, column + 1, width);
    const double upper = lineHeight(kAnimalFace);
    const double lower = lineHeight(kBranchFace);
    const double top = rect.y + (rect.height - upper - lower) / 2;
    Mark mark{.shape = Box{rect, kCellRadius},
        .texts = {{.place = {rect.x, top, rect.width, upper},
                      .text = std::string(animal),
                      .face = kAnimalFace,
                      .alignment = TextAlignment::center},
            {.place = {rect.x, top + upper, rect.width, lower},
                .text = std::string(branch),
                .face = kBranchFace,
                .tint = secondaryTint(),
                .alignment = TextAlignment::center}},
        .role = MarkRole::text,
        .name = std::string(animal) + " " + std::string(branch)};
    if (isOfBirth) {
        mark.fills = {{SystemColor::blue, 0.15}};
    }
    return mark;
}

Mark stemMark(int row, double width)
{
    const auto stem = static_cast<std::size_t>(row) % life::heavenlyStems.size();
    return textMark({.place = gridRect(row + 1, 0, width),
        .text = std::string(life::heavenlyStems[stem]),
        .face = kStemFace,
        .tint = secondaryTint(),
        .alignment = TextAlignment::center});
}

/// What a cell is, in words: "38 岁，现在".
std::string spokenName(const LifeCellInfo& info)
{
    if (info.isNA) {
        return "出生前";
    }
    std::string name = std::to_string(info.cellAge) + " 岁";
    const auto add = [&name](bool isSo, const char* word) {
        if (isSo) {
            name += std::string("，") + word;
        }
    };
    add(info.isBirth, "出生");
    add(info.isLifeExpectancy, "人均寿命");
    add(info.isCurrent, "现在");
    add(info.isPast && !info.isCurrent, "已过");
    add(!info.isPast && !info.isGift, "未来");
    add(info.isGift, "恩赐");
    add(info.personColor.has_value(), "纪念");
    return name;
}

Mark whiteText(const Rect& rect, std::string text, const TextFace& face, double opacity)
{
    return {.shape = Box{rect},
        .texts = {{.place = rect,
            .text = std::move(text),
            .face = face,
            .tint = {kWhite, opacity},
            .alignment = TextAlignment::center,
            .isOnColor = true}}};
}

} // namespace

double lifeGridHeight()
{
    return bottom(gridRect(life::rows, 0, 0)) + kPadding;
}

Rect lifeCellRect(int id, double width)
{
    return gridRect(id / life::columnsPerRow + 1, id % life::columnsPerRow + 1, width);
}

std::vector<Mark> lifeCellMarks(const LifeCellInfo& info, const Rect& rect, int lifeExpectancyAge)
{
    const auto faded = [&info](Tint tint) {
        tint.opacity *= info.opacity;
        return tint;
    };
    std::vector<Mark> marks{{.shape = Box{rect, kCellRadius},
        .fills = {faded(info.bgColor)},
        .role = MarkRole::cell,
        .name = spokenName(info),
        .help = info.isNA ? std::string() : spokenName(info)}};
    if (info.isLifeExpectancy) {
        marks[0].stroke = Stroke{faded({SystemColor::red}), kMarkedStroke};
        marks.push_back(
            whiteText(rect, std::to_string(lifeExpectancyAge), kMarkedFace, info.opacity));
    }
    if (info.isBirth) {
        marks[0].stroke = Stroke{faded({SystemColor::blue}), kMarkedStroke};
        marks.push_back(whiteText(rect, "0", kMarkedFace, info.opacity));
    }
    const std::string age = std::to_string(info.cellAge);
    if (info.isCurrent) {
        marks.push_back(whiteText(rect, age, kCurrentFace, info.opacity));
    } else if (info.isPast && !info.isBirth) {
        marks.push_back(whiteText(rect, age, kAgeFace, 0.7 * info.opacity));
    }
    if (info.personColor) {
        const Point middle = center(rect);
        const auto person = [middle](double side, Tint tint) {
            return SymbolMark{{middle.x - side / 2, middle.y - kPersonRise - side / 2, side, side},
                "person.crop.circle.fill", tint};
        };
        // On a ring of light, as black is none on a dark ground.
        marks.push_back({.shape = Box{rect},
            .symbols = {person(kPersonSide + 2, faded({kWhite, 0.6})),
                person(kPersonSide, faded(*info.personColor))}});
    }
    return marks;
}

std::size_t glowingNumber(std::span<const Mark> cell)
{
    std::size_t place = cell.size() - 1;
    while (place > 0 && cell[place].texts.empty()) {
        --place;
    }
    return place;
}

std::vector<Mark> lifeGridMarks(
    std::span<const LifeCellInfo> cells, int birthCol, int lifeExpectancyAge, double width)
{
    std::vector<Mark> marks{
        boxMark({0, 0, width, lifeGridHeight()}, {SystemColor::orange, 0.05}, kGroundRadius)};
    for (int column = 0; column < life::columnsPerRow; ++column) {
        marks.push_back(headerMark(column, column == birthCol, width));
    }
    for (const LifeCellInfo& info : cells) {
        if (info.id % life::columnsPerRow == 0) {
            marks.push_back(stemMark(info.id / life::columnsPerRow, width));
        }
        const Rect rect = lifeCellRect(info.id, width);
        const std::vector<Mark> cell = lifeCellMarks(info, rect, lifeExpectancyAge);
        if (info.isCurrent) {
            marks.push_back({.shape = cell[0].shape,
                .role = cell[0].role,
                .name = cell[0].name,
                .help = cell[0].help});
        } else {
            marks.insert(marks.end(), cell.begin(), cell.end());
        }
    }
    return marks;
}

} // namespace quillbrook
