#include "report/PeriodFilters.h"

#include "base/Text.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>

namespace quillbrook {
namespace {

constexpr double kMidnight = 1767196800; // 2025-12-31T16:00:00Z, the start of a day of UTC+8

class PeriodFiltersTest : public testing::Test {
protected:
    /// Whether a filter lets a row pass that began, or was stamped, at `time`.
    bool passes(const std::string& filter, double time, const std::string& endedAt = "NULL") const
    {
        const StoreReader store(directory.path() / "filters.db");
        const std::string sql = filled("SELECT COUNT(*) FROM (SELECT CAST({} AS REAL) started_at, "
                                       "CAST({} AS REAL) timestamp, {} ended_at) WHERE {}",
            {shortestText(time), shortestText(time), endedAt, filter});
        return store.value(sql) == "1";
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kMidnight + 3600};
};

TEST_F(PeriodFiltersTest, AreTheseTexts)
{
    const std::string day = "(strftime('%s', datetime('now', '+8 hours', 'start of day')) - 28800)";
    EXPECT_EQ(dayStartSql, day);
    EXPECT_EQ(dateFilter(TodayPeriod::today), "started_at >= " + day);
    EXPECT_EQ(dateFilter(TodayPeriod::yesterday),
        "started_at >= " + day + " - 86400 AND started_at < " + day);
    EXPECT_EQ(keystrokeFilter(TodayPeriod::today), "timestamp >= " + day);
    EXPECT_EQ(keystrokeFilter(TodayPeriod::yesterday),
        "timestamp >= " + day + " - 86400 AND timestamp < " + day);
    EXPECT_EQ(dateFilter(HistoryPeriod::year), "started_at >= " + day + " - 365*86400");
    EXPECT_EQ(dateFilter(HabitPeriod::week), "started_at >= " + day + " - 7*86400");
    EXPECT_EQ(dateFilter(SessionsPeriod::hour1, 1767200000.9), "started_at >= 1767196400");
    EXPECT_EQ(dateFilter(IdlesPeriod::hour6, 1767200000.9),
        "(started_at >= 1767178400 OR ended_at IS NULL)");
    EXPECT_EQ(dateFilter(KeylogPeriod::week, 28800),
        "timestamp >= strftime('%s', datetime('now', '+28800 seconds', 'start of day')) - 28800 - "
        "7*86400");
    EXPECT_EQ(dateFilter(KeylogPeriod::today, -18000),
        "timestamp >= strftime('%s', datetime('now', '+-18000 seconds', 'start of day')) - -18000");
}

TEST_F(PeriodFiltersTest, PagesWithOneNameForAPeriodCutItAlike)
{
    const double now = 1767200000;
    EXPECT_EQ(dateFilter(HistoryPeriod::today), dateFilter(FocusPeriod::today));
    EXPECT_EQ(dateFilter(HistoryPeriod::today), dateFilter(HabitPeriod::today));
    EXPECT_EQ(dateFilter(HistoryPeriod::today), dateFilter(SessionsPeriod::today, now));
    EXPECT_EQ(dateFilter(HistoryPeriod::today), dateFilter(IdlesPeriod::today, now));
    EXPECT_EQ(dateFilter(HistoryPeriod::yesterday), dateFilter(TodayPeriod::yesterday));
    EXPECT_EQ(dateFilter(HistoryPeriod::yesterday), dateFilter(FocusPeriod::yesterday));
    EXPECT_EQ(dateFilter(HistoryPeriod::yesterday), dateFilter(HabitPeriod::yesterday));
    EXPECT_EQ(dateFilter(HistoryPeriod::yesterday), dateFilter(SessionsPeriod::yesterday, now));
    EXPECT_EQ(dateFilter(HistoryPeriod::yesterday), dateFilter(IdlesPeriod::yesterday, now));
    EXPECT_EQ(dateFilter(HistoryPeriod::week), dateFilter(FocusPeriod::week));
    EXPECT_EQ(dateFilter(HistoryPeriod::week), dateFilter(HabitPeriod::week));
    EXPECT_EQ(dateFilter(HistoryPeriod::month), dateFilter(FocusPeriod::month));
    EXPECT_EQ(dateFilter(HistoryPeriod::month), dateFilter(HabitPeriod::month));
    EXPECT_EQ(
        dateFilter(HistoryPeriod::month), filled("started_at >= {} - 30*86400", {dayStartSql}));
}

TEST_F(PeriodFiltersTest, AllIsNoCondition)
{
    EXPECT_EQ(dateFilter(HistoryPeriod::all), "1=1");
    EXPECT_EQ(dateFilter(FocusPeriod::all), "1=1");
    EXPECT_EQ(bootFilter("1=1"), "1=1");
}

TEST_F(PeriodFiltersTest, BootsAreCutByTheirTimestamp)
{
    EXPECT_EQ(
        bootFilter(dateFilter(HistoryPeriod::yesterday)), keystrokeFilter(TodayPeriod::yesterday));
}

TEST_F(PeriodFiltersTest, TheDayChangesAtSixteenHoursUtcInEveryZone)
{
    machine.timeZone.setSecondsFromUtc(-18000);
    machine.clock.set(kMidnight - 1);
    EXPECT_TRUE(passes(dateFilter(TodayPeriod::today), kMidnight - 86400));
    EXPECT_FALSE(passes(dateFilter(TodayPeriod::today), kMidnight - 86400.001));
    machine.clock.set(kMidnight + 1);
    EXPECT_FALSE(passes(dateFilter(TodayPeriod::today), kMidnight - 86400));
    EXPECT_TRUE(passes(dateFilter(TodayPeriod::yesterday), kMidnight - 86400));
    EXPECT_TRUE(passes(dateFilter(TodayPeriod::yesterday), kMidnight - 0.001));
    EXPECT_FALSE(passes(dateFilter(TodayPeriod::yesterday), kMidnight));
    EXPECT_TRUE(passes(dateFilter(TodayPeriod::today), kMidnight));
}

TEST_F(PeriodFiltersTest, AWeekIsTodayAndSevenDays)
{
    EXPECT_TRUE(passes(dateFilter(HistoryPeriod::week), kMidnight - 7 * 86400));
    EXPECT_FALSE(passes(dateFilter(HistoryPeriod::week), kMidnight - 7 * 86400 - 0.001));
}

TEST_F(PeriodFiltersTest, AnOpenIdlePeriodShowsHoweverOld)
{
    const double now = machine.clock.now();
    EXPECT_TRUE(passes(dateFilter(IdlesPeriod::hour1, now), now - 90000));
    EXPECT_FALSE(passes(dateFilter(IdlesPeriod::hour1, now), now - 90000, "1"));
    EXPECT_FALSE(passes(dateFilter(IdlesPeriod::today, now), now - 90000));
    EXPECT_FALSE(passes(dateFilter(SessionsPeriod::hour1, now), now - 3601));
    EXPECT_TRUE(passes(dateFilter(SessionsPeriod::hour1, now), now - 3600));
}

TEST_F(PeriodFiltersTest, KeysAreCutByTheComputersDay)
{
    for (const double time : {kMidnight - 0.001, kMidnight}) {
        EXPECT_EQ(passes(dateFilter(KeylogPeriod::today, 28800), time),
            passes(keystrokeFilter(TodayPeriod::today), time));
    }
    const double utcMidnight = kMidnight - 57600;
    EXPECT_TRUE(passes(dateFilter(KeylogPeriod::today, 0), utcMidnight));
    EXPECT_FALSE(passes(dateFilter(KeylogPeriod::today, 0), utcMidnight - 0.001));
    EXPECT_FALSE(passes(keystrokeFilter(TodayPeriod::today), utcMidnight));
}

TEST_F(PeriodFiltersTest, WestOfGreenwichNoKeyIsFound)
{
    // The text is kept as other readers have it, and SQLite refuses its modifier.
    for (const auto& period : allCases<KeylogPeriod>) {
        EXPECT_FALSE(passes(dateFilter(period.value, -18000), machine.clock.now()));
    }
}

TEST_F(PeriodFiltersTest, TheDayStartsAlikeInTheStoreAndHere)
{
    const StoreReader store(directory.path() / "filters.db");
    for (const double now :
        {kMidnight - 0.001, kMidnight, kMidnight + 0.001, kMidnight + 86399.999, 1709222400.5}) {
        machine.clock.set(now);
        EXPECT_EQ(std::to_string(static_cast<std::int64_t>(bjTodayStartUTC(now))),
            store.value(filled("SELECT {}", {dayStartSql})));
    }
}

TEST_F(PeriodFiltersTest, FocusEndsAtThePresentHourOfToday)
{
    EXPECT_EQ(maxHour(FocusPeriod::today, kMidnight), 0);
    EXPECT_EQ(maxHour(FocusPeriod::today, kMidnight + 1800), 0);
    EXPECT_EQ(maxHour(FocusPeriod::today, kMidnight + 3600), 1);
    EXPECT_EQ(maxHour(FocusPeriod::today, kMidnight - 0.5), 23);
    EXPECT_EQ(maxHour(FocusPeriod::today, -28801), 23) << "before 1970";
    EXPECT_EQ(maxHour(FocusPeriod::today, -100800), 4);
    EXPECT_EQ(maxHour(FocusPeriod::yesterday, kMidnight), 23);
    EXPECT_EQ(maxHour(FocusPeriod::all, kMidnight), 23);
}

TEST_F(PeriodFiltersTest, AlertsAreCountedInDays)
{
    EXPECT_EQ(alertDays(AlertsPeriod::week), 7);
    EXPECT_EQ(alertDays(AlertsPeriod::month), 30);
    EXPECT_EQ(alertDays(AlertsPeriod::all), 3650);
}

} // namespace
} // namespace quillbrook
