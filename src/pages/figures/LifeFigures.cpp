#include "pages/figures/LifeFigures.h"

#include "base/IsoTime.h"
#include "base/Text.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace quillbrook {

namespace {

constexpr int kCycleBegin = 1984; // a year of the rat
constexpr double kDaySec = 86400;
constexpr Tint kBirthTint{SystemColor::blue, 0.4};
constexpr Tint kExpectancyTint{SystemColor::red, 0.55};

/// Somebody who is commemorated at an age.
struct Memorial {
    int age;
    std::string_view name;
    Tint color;
};

/// By the year of their life that was the last.
constexpr std::array memorialPeople = {
    Memorial{41, "卡夫卡", {kBlack}},
    Memorial{47, "加缪", {kBlack}},
    Memorial{99, "冰心", {SystemColor::blue}},
};

std::optional<Tint> personColorAt(int cellAge)
{
    const auto* const found = std::find_if(memorialPeople.begin(), memorialPeople.end(),
        [cellAge](const Memorial& person) { return person.age == cellAge; });
    return found == memorialPeople.end() ? std::nullopt : std::optional(found->color);
}

/// Gives a cell whose flags are set its look. The first case that holds decides.
void setLook(LifeCellInfo& cell, int age, int lifeExpectancyAge)
{
    const auto look = [&cell](Tint color, double opacity) {
        cell.bgColor = color;
        cell.opacity = opacity;
    };
    constexpr double kPale = 0.25;
    if (cell.isNA) {
        look({SystemColor::gray, 0.05}, 0.08);
    } else if (cell.isLifeExpectancy) {
        look(kExpectancyTint, 1);
    } else if (cell.isBirth) {
        look(kBirthTint, age == 0 ? kPale : 1);
    } else if (cell.isGift) {
        look({SystemColor::green, 0.15}, 1);
    } else if (cell.isPast) {
        look({SystemColor::orange, 0.35}, 1);
    } else {
        const bool isPale = cell.cellAge < lifeExpectancyAge && cell.cellAge != age;
        look({SystemColor::gray, 0.08}, isPale ? kPale : 1);
    }
}

/// Local time at the first moment of a year.
double yearBegin(int year)
{
    using namespace std::chrono;
    const sys_days first{std::chrono::year{year} / January / 1};
    return static_cast<double>(first.time_since_epoch().count()) * kDaySec;
}

/// Whole days between two local times; 0 when there is no such number.
std::int64_t wholeDays(double from, double to)
{
    constexpr double kMostDays = 1e15;
    const double days = (to - from) / kDaySec;
    return std::abs(days) < kMostDays ? static_cast<std::int64_t>(days) : 0;
}

} // namespace

int birthYearOf(std::int64_t stored)
{
    constexpr std::int64_t kLastYear = 9999;
    return stored >= 1 && stored <= kLastYear ? static_cast<int>(stored) : life::kDefaultBirthYear;
}

int birthColumn(int birthYear)
{
    const int column = (birthYear - kCycleBegin) % life::columnsPerRow;
    return column < 0 ? column + life::columnsPerRow : column;
}

int lifeAge(int currentYear, int birthYear)
{
    return std::max(currentYear - birthYear, 0);
}

int lifeExpectancyAge()
{
    return static_cast<int>(std::lround(life::lifeExpectancy));
}

std::vector<LifeCellInfo> computeCellInfos(int age, int birthCol, int lifeExpectancyAge)
{
    std::vector<LifeCellInfo> cells;
    cells.reserve(life::totalYears);
    for (int i = 0; i < life::totalYears; ++i) {
        const int cellAge = i - birthCol + 1;
        const bool isNA = i < birthCol;
        LifeCellInfo cell{.id = i,
            .cellAge = cellAge,
            .isNA = isNA,
            .isPast = !isNA && cellAge <= age,
            .isCurrent = !isNA && cellAge == age, // at 0 no year of life is behind anybody
            .isGift = cellAge > lifeExpectancyAge,
            .isBirth = i == birthCol,
            .isLifeExpectancy = cellAge == lifeExpectancyAge,
            .personColor = personColorAt(cellAge)};
        setLook(cell, age, lifeExpectancyAge);
        cells.push_back(cell);
    }
    return cells;
}

LifeMoment lifeMoment(double unixSeconds, int zoneSeconds)
{
    return {civilTime(unixSeconds, zoneSeconds).year, unixSeconds + zoneSeconds};
}

std::int64_t daysFromBirth(int birthYear, const LifeMoment& moment)
{
    return wholeDays(yearBegin(birthYear), moment.localSeconds);
}

std::int64_t daysPassedInYear(const LifeMoment& moment)
{
    return wholeDays(yearBegin(moment.currentYear), moment.localSeconds) + 1;
}

std::int64_t daysRemainingInYear(const LifeMoment& moment)
{
    return wholeDays(moment.localSeconds, yearBegin(moment.currentYear + 1));
}

double yearProgress(const LifeMoment& moment)
{
    const auto total = wholeDays(yearBegin(moment.currentYear), yearBegin(moment.currentYear + 1));
    return static_cast<double>(daysPassedInYear(moment)) / static_cast<double>(total);
}

std::string lifePercent(double share)
{
    return fixedText(share * 100, 1) + "%";
}

Color yearProgressColor(double share)
{
    const double p = std::clamp(share, 0.0, 1.0);
    const auto channel
        = [](double part) { return static_cast<std::uint8_t>(std::lround(part * 255)); };
    return {channel(p * 0.55), channel((1 - p) * 0.65), 0};
}

std::array<FigureContent, 4> lifeCards(int birthYear, const LifeMoment& moment)
{
    const double lived
        = std::min(lifeAge(moment.currentYear, birthYear) / life::lifeExpectancy, 1.0);
    return {{{"calendar", SystemColor::blue, std::to_string(daysFromBirth(birthYear, moment)),
                 "生命已逝/天"},
        {"checkmark.circle", SystemColor::green, std::to_string(daysPassedInYear(moment)),
            "今年已过"},
        {"heart.fill", SystemColor::red, lifePercent(lived), "人生进度"},
        {"calendar.badge.clock", SystemColor::orange, lifePercent(yearProgress(moment)),
            "当年进度"}}};
}

} // namespace quillbrook
