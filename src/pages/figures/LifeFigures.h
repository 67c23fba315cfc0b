#pragma once

#include "base/Color.h"
#include "pages/marks/FigureContent.h"
#include "pages/marks/Tint.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// The grid of a life: a cell for each year, a row for each round of the twelve animals.
namespace life {

inline constexpr double lifeExpectancy = 84.11; // years, in Shanghai
inline constexpr int totalYears = 108;
inline constexpr int columnsPerRow = 12;
inline constexpr int rows = 9;

inline constexpr int kDefaultBirthYear = 1988;
inline constexpr int kFirstBirthYear = 1970; // that can be chosen
inline constexpr int kLastBirthYear = 2020;

/// An animal of the cycle and its earthly branch.
struct ZodiacSign {
    std::string_view animal;
    std::string_view branch;
};

inline constexpr std::array<ZodiacSign, columnsPerRow> zodiacWithBranch
    = {{{"🐀", "子"}, {"🐂", "丑"}, {"🐅", "寅"}, {"🐇", "卯"}, {"🐉", "辰"}, {"🐍", "巳"}, {"🐎", "午"},
        {"🐑", "未"}, {"🐒", "申"}, {"🐓", "酉"}, {"🐕", "戌"}, {"🐖", "亥"}}};

inline constexpr std::array<std::string_view, 10> heavenlyStems
    = {"甲", "乙", "丙", "丁", "戊", "己", "庚", "辛", "壬", "癸"};

} // namespace life

/// A year of a life in the grid.
struct LifeCellInfo {
    int id = 0; // the place in the grid, from 0
    int cellAge = 0; // counts the years that were begun: the year of birth is the first
    bool isNA = false; // before the birth
    bool isPast = false;
    bool isCurrent = false;
    bool isGift = false; // beyond what is to be expected
    bool isBirth = false;
    bool isLifeExpectancy = false;
    Tint bgColor{};
    double opacity = 1; // of the whole cell
    std::optional<Tint> personColor{}; // of the mark of somebody who lived to that age

    bool operator==(const LifeCellInfo&) const = default;
};

/// The birth year that a stored number means: a year of the calendar itself, anything else the
/// default.
int birthYearOf(std::int64_t stored);

/// The column of the birth year, which is its earthly branch: 1984 began a cycle.
int birthColumn(int birthYear);

/// Years from the birth year to `currentYear`, at least 0.
int lifeAge(int currentYear, int birthYear);

/// The years to be expected, whole.
int lifeExpectancyAge();

/// All cells of the grid, in its order.
std::vector<LifeCellInfo> computeCellInfos(int age, int birthCol, int lifeExpectancyAge);

/// A moment as the local calendar sees it.
struct LifeMoment {
    int currentYear = 1970; // stays while the time goes on
    double localSeconds = 0; // wall-clock time since the beginning of 1970, local
};

/// The moment of an instant, seconds since 1970, in a zone so many seconds ahead of UTC.
LifeMoment lifeMoment(double unixSeconds, int zoneSeconds);

/// Whole days since the first day of the birth year, as the birthday itself is unknown.
std::int64_t daysFromBirth(int birthYear, const LifeMoment& moment);

/// The present day's place in the current year, from 1.
std::int64_t daysPassedInYear(const LifeMoment& moment);

/// Whole days until the next year begins.
std::int64_t daysRemainingInYear(const LifeMoment& moment);

/// The days of the current year that were begun, as a share of all.
double yearProgress(const LifeMoment& moment);

/// "35.2%", of a share.
std::string lifePercent(double share);

/// The color that says how far the year is: green at its beginning, red at its end.
Color yearProgressColor(double share);

/// The page's four figures.
std::array<FigureContent, 4> lifeCards(int birthYear, const LifeMoment& moment);

} // namespace quillbrook
