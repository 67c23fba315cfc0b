#include "pages/figures/LifeFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quillbrook {
namespace {

using testing::Each;
using testing::Field;
using testing::IsEmpty;

constexpr double kDay = 86400;
constexpr double kBegin2026 = 1767225600; // 00:00 in UTC
constexpr Tint kNA{SystemColor::gray, 0.05};
constexpr Tint kExpectancy{SystemColor::red, 0.55};
constexpr Tint kBirth{SystemColor::blue, 0.4};
constexpr Tint kGift{SystemColor::green, 0.15};
constexpr Tint kPast{SystemColor::orange, 0.35};
constexpr Tint kAhead{SystemColor::gray, 0.08};

std::vector<LifeCellInfo> cellsOf(int birthYear, int age)
{
    return computeCellInfos(age, birthColumn(birthYear), lifeExpectancyAge());
}

std::size_t count(const std::vector<LifeCellInfo>& cells, bool LifeCellInfo::*flag)
{
    return static_cast<std::size_t>(std::count_if(
        cells.begin(), cells.end(), [flag](const LifeCellInfo& cell) { return cell.*flag; }));
}

/// A moment of a year by its day, from 0, at a time of the day.
LifeMoment momentAt(int year, double firstDaySec, double day)
{
    return {year, firstDaySec + day * kDay};
}

TEST(LifeFigures, TakesTheExpectedYearsAsAWholeNumber)
{
    EXPECT_EQ(lifeExpectancyAge(), 84);
    EXPECT_EQ(life::totalYears, life::columnsPerRow * life::rows);
}

TEST(LifeFigures, FindsTheColumnOfTheBirthYear)
{
    EXPECT_EQ(birthColumn(1984), 0);
    EXPECT_EQ(birthColumn(1985), 1);
    EXPECT_EQ(birthColumn(1988), 4);
    EXPECT_EQ(birthColumn(1995), 11);
    EXPECT_EQ(birthColumn(1996), 0);
    EXPECT_EQ(birthColumn(1983), 11);
    EXPECT_EQ(birthColumn(1972), 0);
    EXPECT_EQ(birthColumn(1970), 10);
    EXPECT_EQ(birthColumn(2020), 0);
    EXPECT_EQ(birthColumn(1), 9);
}

TEST(LifeFigures, TakesWhatIsNoYearForTheDefault)
{
    EXPECT_EQ(birthYearOf(0), 1988); // nothing stored
    EXPECT_EQ(birthYearOf(-1), 1988);
    EXPECT_EQ(birthYearOf(10000), 1988);
    EXPECT_EQ(birthYearOf(std::numeric_limits<std::int64_t>::min()), 1988);
    EXPECT_EQ(birthYearOf(std::numeric_limits<std::int64_t>::max()), 1988);
    EXPECT_EQ(birthYearOf(1), 1);
    EXPECT_EQ(birthYearOf(1969), 1969);
    EXPECT_EQ(birthYearOf(2030), 2030);
    EXPECT_EQ(birthYearOf(9999), 9999);
}

TEST(LifeFigures, CountsNoYearsBelowNone)
{
    EXPECT_EQ(lifeAge(2026, 1988), 38);
    EXPECT_EQ(lifeAge(2026, 2026), 0);
    EXPECT_EQ(lifeAge(2026, 2027), 0);
    EXPECT_EQ(lifeAge(2026, 9999), 0);
}

TEST(LifeCells, BeginAtTheFirstCellInAYearOfTheRat)
{
    const auto cells = cellsOf(1984, 42);
    ASSERT_EQ(cells.size(), 108U);
    EXPECT_EQ(count(cells, &LifeCellInfo::isNA), 0U);
    EXPECT_TRUE(cells[0].isBirth);
    EXPECT_EQ(cells[0].cellAge, 1);
    EXPECT_TRUE(cells[83].isLifeExpectancy);
    EXPECT_EQ(cells[83].cellAge, 84);
    EXPECT_EQ(cells[107].cellAge, 108);
}

TEST(LifeCells, LeaveOutTheYearsBeforeTheBirth)
{
    const auto cells = cellsOf(1988, 38);
    EXPECT_EQ(count(cells, &LifeCellInfo::isNA), 4U);
    EXPECT_TRUE(cells[3].isNA);
    EXPECT_FALSE(cells[4].isNA);
    EXPECT_TRUE(cells[4].isBirth);
    EXPECT_TRUE(cells[87].isLifeExpectancy);
    EXPECT_EQ(cells[87].cellAge, 84);
    EXPECT_FALSE(cells[87].isGift);
    for (std::size_t id = 88; id < 108; ++id) {
        EXPECT_TRUE(cells[id].isGift);
    }
    EXPECT_EQ(count(cells, &LifeCellInfo::isGift), 20U);
    EXPECT_EQ(cells[107].cellAge, 104);
    for (std::size_t id = 0; id < 108; ++id) {
        EXPECT_EQ(cells[id].id, static_cast<int>(id));
    }
}

TEST(LifeCells, TellPastAndPresent)
{
    const auto cells = cellsOf(1988, 38);
    EXPECT_TRUE(cells[41].isCurrent);
    EXPECT_EQ(cells[41].cellAge, 38);
    EXPECT_TRUE(cells[41].isPast);
    EXPECT_EQ(count(cells, &LifeCellInfo::isCurrent), 1U);
    EXPECT_EQ(count(cells, &LifeCellInfo::isPast), 38U);
    EXPECT_FALSE(cells[3].isPast);
    EXPECT_FALSE(cells[42].isPast);
}

TEST(LifeCells, AreColouredByTheFirstCaseThatHolds)
{
    const auto cells = cellsOf(1988, 38);
    const auto look
        = [&](std::size_t id) { return std::pair(cells[id].bgColor, cells[id].opacity); };
    EXPECT_EQ(look(0), std::pair(kNA, 0.08));
    EXPECT_EQ(look(3), std::pair(kNA, 0.08));
    EXPECT_EQ(look(4), std::pair(kBirth, 1.0));
    EXPECT_EQ(look(5), std::pair(kPast, 1.0));
    EXPECT_EQ(look(41), std::pair(kPast, 1.0)); // the present year, too
    EXPECT_EQ(look(42), std::pair(kAhead, 0.25));
    EXPECT_EQ(look(86), std::pair(kAhead, 0.25));
    EXPECT_EQ(look(87), std::pair(kExpectancy, 1.0));
    EXPECT_EQ(look(88), std::pair(kGift, 1.0));
    EXPECT_EQ(look(107), std::pair(kGift, 1.0));
}

TEST(LifeCells, KeepTheColourOfAGiftOnceItIsPast)
{
    const auto cells = cellsOf(1984, 90);
    EXPECT_TRUE(cells[86].isPast);
    EXPECT_TRUE(cells[86].isGift);
    EXPECT_EQ(cells[86].bgColor, kGift);
    EXPECT_EQ(cells[89].bgColor, kGift);
    EXPECT_TRUE(cells[89].isCurrent);
    EXPECT_EQ(cells[83].bgColor, kExpectancy);
    EXPECT_EQ(cells[82].bgColor, kPast);
}

TEST(LifeCells, HaveNoPresentYearBeforeTheFirstIsOver)
{
    for (const int birthYear : {1984, 1988, 2030}) {
        const auto cells = cellsOf(birthYear, 0);
        EXPECT_EQ(count(cells, &LifeCellInfo::isCurrent), 0U);
        EXPECT_EQ(count(cells, &LifeCellInfo::isPast), 0U);
        const auto birth = static_cast<std::size_t>(birthColumn(birthYear));
        EXPECT_EQ(cells[birth].opacity, 0.25);
        EXPECT_EQ(cells[birth].bgColor, kBirth);
    }
}

TEST(LifeCells, MeetAtTheFirstYearAndAtTheExpectedOne)
{
    const auto first = cellsOf(1988, 1);
    EXPECT_TRUE(first[4].isBirth && first[4].isCurrent && first[4].isPast);
    EXPECT_EQ(first[4].opacity, 1);
    const auto last = cellsOf(1988, 84);
    EXPECT_TRUE(last[87].isLifeExpectancy && last[87].isCurrent);
    EXPECT_EQ(last[87].bgColor, kExpectancy);
}

TEST(LifeCells, HaveNoPresentYearBeyondTheGrid)
{
    EXPECT_EQ(count(cellsOf(1984, 108), &LifeCellInfo::isCurrent), 1U);
    EXPECT_EQ(count(cellsOf(1984, 109), &LifeCellInfo::isCurrent), 0U);
    const auto cells = cellsOf(1, 9998);
    EXPECT_EQ(count(cells, &LifeCellInfo::isCurrent), 0U);
    EXPECT_EQ(count(cells, &LifeCellInfo::isPast), 99U); // all behind the nine before the birth
}

TEST(LifeCells, CommemorateThreeAges)
{
    for (const int age : {20, 60, 105}) {
        const auto cells = cellsOf(1984, age);
        EXPECT_EQ(cells[40].personColor, Tint{kBlack});
        EXPECT_EQ(cells[46].personColor, Tint{kBlack});
        EXPECT_EQ(cells[98].personColor, Tint{SystemColor::blue});
        EXPECT_EQ(std::count_if(cells.begin(), cells.end(),
                      [](const LifeCellInfo& cell) { return cell.personColor.has_value(); }),
            3);
    }
}

TEST(LifeDays, AreCountedFromTheFirstDayOfTheBirthYear)
{
    EXPECT_EQ(daysFromBirth(2026, {2026, kBegin2026}), 0);
    EXPECT_EQ(daysFromBirth(2026, {2026, kBegin2026 + kDay - 0.001}), 0);
    EXPECT_EQ(daysFromBirth(2026, {2026, kBegin2026 + kDay}), 1);
    EXPECT_EQ(daysFromBirth(2025, {2026, kBegin2026}), 365);
    EXPECT_EQ(daysFromBirth(2024, {2026, kBegin2026}), 731);
    EXPECT_EQ(daysFromBirth(1988, {2026, kBegin2026}), 13880); // 38 years, ten of them leap years
}

TEST(LifeDays, AreNegativeBeforeTheBirthAndNoneWhereNothingCanBeCounted)
{
    EXPECT_EQ(daysFromBirth(2027, {2026, kBegin2026}), -365);
    EXPECT_EQ(daysFromBirth(2027, {2026, kBegin2026 + kDay / 2}), -364); // begun days don't count
    EXPECT_EQ(daysFromBirth(1988, {2026, std::numeric_limits<double>::quiet_NaN()}), 0);
    EXPECT_EQ(daysFromBirth(1988, {2026, std::numeric_limits<double>::infinity()}), 0);
    EXPECT_EQ(daysFromBirth(1988, {2026, 1e300}), 0);
}

TEST(LifeDays, FollowTheLocalCalendar)
{
    const double eveningInUtc = kBegin2026 - 3 * 3600; // 31 December 21:00
    EXPECT_EQ(lifeMoment(eveningInUtc, 0).currentYear, 2025);
    EXPECT_EQ(lifeMoment(eveningInUtc, 8 * 3600).currentYear, 2026);
    EXPECT_EQ(daysPassedInYear(lifeMoment(eveningInUtc, 0)), 365);
    EXPECT_EQ(daysPassedInYear(lifeMoment(eveningInUtc, 8 * 3600)), 1);
    EXPECT_EQ(lifeMoment(kBegin2026, -1).currentYear, 2025);
}

TEST(LifeDays, AddUpToTheYear)
{
    const auto year = [](int number, double begin, double day) {
        const LifeMoment moment = momentAt(number, begin, day);
        return std::pair(daysPassedInYear(moment), daysRemainingInYear(moment));
    };
    EXPECT_EQ(year(2026, kBegin2026, 0.4), std::pair(std::int64_t{1}, std::int64_t{364}));
    EXPECT_EQ(year(2026, kBegin2026, 99.5), std::pair(std::int64_t{100}, std::int64_t{265}));
    EXPECT_EQ(year(2026, kBegin2026, 364.99), std::pair(std::int64_t{365}, std::int64_t{0}));
    constexpr double kBegin2028 = kBegin2026 + 730 * kDay;
    EXPECT_EQ(year(2028, kBegin2028, 59.5), std::pair(std::int64_t{60}, std::int64_t{306}));
    EXPECT_EQ(year(2028, kBegin2028, 365.5), std::pair(std::int64_t{366}, std::int64_t{0}));
}

TEST(LifeDays, AreAShareOfTheYear)
{
    EXPECT_EQ(yearProgress(momentAt(2026, kBegin2026, 0.1)), 1 / 365.0);
    EXPECT_EQ(yearProgress(momentAt(2026, kBegin2026, 72.9)), 73 / 365.0);
    EXPECT_EQ(yearProgress(momentAt(2026, kBegin2026, 364.9)), 1);
    EXPECT_EQ(yearProgress(momentAt(2028, kBegin2026 + 730 * kDay, 182.5)), 183 / 366.0);
}

TEST(LifeCards, ShowTheFourFigures)
{
    const auto cards = lifeCards(1988, momentAt(2026, kBegin2026, 72.5));
    EXPECT_EQ(cards[0], (FigureContent{"calendar", SystemColor::blue, "13952", "生命已逝/天"}));
    EXPECT_EQ(cards[1], (FigureContent{"checkmark.circle", SystemColor::green, "73", "今年已过"}));
    EXPECT_EQ(cards[2], (FigureContent{"heart.fill", SystemColor::red, "45.2%", "人生进度"}));
    EXPECT_EQ(cards[3],
        (FigureContent{"calendar.badge.clock", SystemColor::orange, "20.0%", "当年进度"}));
}

TEST(LifeCards, StopTheLifeAtAll)
{
    EXPECT_EQ(lifeCards(1942, {2026, kBegin2026})[2].value, "99.9%"); // 84 of 84.11
    EXPECT_EQ(lifeCards(1941, {2026, kBegin2026})[2].value, "100.0%");
    EXPECT_EQ(lifeCards(1, {2026, kBegin2026})[2].value, "100.0%");
    EXPECT_EQ(lifeCards(2026, {2026, kBegin2026})[2].value, "0.0%");
    EXPECT_EQ(lifeCards(2030, {2026, kBegin2026})[2].value, "0.0%");
}

TEST(YearProgressColor, RunsFromGreenToDarkRed)
{
    EXPECT_EQ(yearProgressColor(0), (Color{0, 166, 0}));
    EXPECT_EQ(yearProgressColor(0.5), (Color{70, 83, 0}));
    EXPECT_EQ(yearProgressColor(1), (Color{140, 0, 0}));
    EXPECT_EQ(yearProgressColor(-1), yearProgressColor(0));
    EXPECT_EQ(yearProgressColor(7), yearProgressColor(1));
}

} // namespace
} // namespace quillbrook
