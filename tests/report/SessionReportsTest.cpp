#include "tests/report/ReportFixture.h"

#include "report/SessionReports.h"

#include <cmath>
#include <random>

namespace quillbrook {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class SessionReportsTest : public ReportFixture {
protected:
    std::vector<SessionDetail> sessions()
    {
        return read({.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today})
            .recentSessions;
    }

    std::vector<FocusHour> focusHours(FocusPeriod period)
    {
        return read({.tab = NavTab::focus, .focusPeriod = period}).focusHours;
    }
};

TEST_F(SessionReportsTest, AListHoldsTwoHundredRowsNewestFirst)
{
    for (int i = 0; i < 205; ++i) {
        session("Editor", i * 10, i * 10 + 5);
    }
    const auto rows = sessions();
    ASSERT_THAT(rows, SizeIs(200));
    EXPECT_EQ(rows.front().startedAt, kMidnight + 2040);
}

TEST_F(SessionReportsTest, ARunningSessionIsActiveWhateverItsCode)
{
    exec("INSERT INTO app_sessions (app_name, started_at, close_type) "
         "VALUES ('Editor', 1767240000.5, 5)");
    const auto rows = sessions();
    ASSERT_THAT(rows, SizeIs(1));
    EXPECT_EQ(rows[0].status, "active");
    EXPECT_EQ(rows[0].closeType, "—");
    EXPECT_EQ(rows[0].bundleId, "unknown");
    EXPECT_EQ(rows[0].durationSec, 0);
}

TEST_F(SessionReportsTest, EveryCodeButASwitchIsARecovery)
{
    const std::vector<std::pair<int, std::string>> codes
        = {{0, "switch"}, {1, "idle_recover"}, {2, "sleep_recover"}, {3, "lock_recover"}, {4, ""},
            {5, "startup"}, {6, "switch"}, {7, "switch"}, {-1, "switch"}};
    for (const auto& [code, label] : codes) {
        exec("DELETE FROM app_sessions");
        session("Editor", 10, 20, "org.ed", code);
        const auto rows = sessions();
        ASSERT_THAT(rows, SizeIs(1));
        EXPECT_EQ(rows[0].status, code == 0 ? "closed" : "recover") << code;
        EXPECT_EQ(rows[0].closeType, label) << code;
    }
}

TEST_F(SessionReportsTest, AnIdlePeriodStillOpenShowsUnderTheHour)
{
    exec("INSERT INTO idle_periods (id, started_at, ended_at, duration_sec, source_type) VALUES "
         "(7, 1767100000.5, NULL, NULL, NULL), (8, 1767100001, 1767100002, 1, 2)");
    const auto idles = read({.tab = NavTab::idles, .idlesPeriod = IdlesPeriod::hour1}).recentIdles;
    ASSERT_THAT(idles, SizeIs(1));
    EXPECT_EQ(idles[0].rowId, 7);
    EXPECT_EQ(idles[0].sourceType, 1);
    EXPECT_FALSE(idles[0].endedAt);
}

TEST_F(SessionReportsTest, ASessionIsSpreadOverItsHours)
{
    session("loginwindow", 9 * 3600 + 1800, 11 * 3600 + 1800);
    const auto hours = focusHours(FocusPeriod::today);
    ASSERT_THAT(hours, SizeIs(16));
    EXPECT_EQ(hours[9].activeSec, 1800);
    EXPECT_EQ(hours[10].activeSec, 3600);
    EXPECT_EQ(hours[11].activeSec, 1800);
    EXPECT_EQ(hours[10].activeDays, 1);
    EXPECT_EQ(hours[12].activeDays, 0);
}

TEST_F(SessionReportsTest, ASessionOverMidnightCountsAsTheDayOfItsStart)
{
    session("Editor", -1800, 1800);
    session("Editor", -1000, 300);
    auto hours = focusHours(FocusPeriod::week);
    EXPECT_EQ(hours[23].activeDays, 1);
    EXPECT_EQ(hours[0].activeDays, 1);
    EXPECT_EQ(hours[0].activeSec, 2100);
    session("Editor", 60, 120);
    hours = focusHours(FocusPeriod::week);
    EXPECT_EQ(hours[0].activeDays, 2);
}

TEST_F(SessionReportsTest, TodayEndsAtThePresentHour)
{
    machine.clock.set(kMidnight + 10 * 3600 + 900);
    const auto hours = focusHours(FocusPeriod::today);
    ASSERT_THAT(hours, SizeIs(11));
    EXPECT_EQ(hours.back().hour, 10);
    EXPECT_EQ(hours.back().activeSec, 0);
    EXPECT_THAT(focusHours(FocusPeriod::all), SizeIs(24));
}

TEST_F(SessionReportsTest, ARowThatSpansAgesIsNotWalkedThrough)
{
    exec("INSERT INTO app_sessions (app_name, started_at, ended_at, duration_sec) VALUES "
         "('A', 0, 1e14, 1), ('B', -1e300, 1e300, 1), ('C', 0, 9e999, 1), ('D', 'x', 'y', 1)");
    const auto hours = focusHours(FocusPeriod::all);
    ASSERT_THAT(hours, SizeIs(24));
    double sum = 0;
    for (const FocusHour& hour : hours) {
        sum += hour.activeSec;
    }
    EXPECT_NEAR(sum, 1e14, 1);
}

TEST_F(SessionReportsTest, LengthsFallIntoBucketsFromTenSecondsOn)
{
    for (const double seconds : {9.9, 10.0, 59.9, 60.0, 360.0, 5000.0}) {
        session("Editor", 100, 100 + seconds);
    }
    const auto buckets = read({.tab = NavTab::focus}).durationBuckets;
    ASSERT_THAT(buckets, SizeIs(3));
    EXPECT_EQ(buckets[0].label, "<1min");
    EXPECT_EQ(buckets[0].count, 2);
    EXPECT_EQ(buckets[1].label, "1-2min");
    EXPECT_EQ(buckets[1].rangeMin, 60);
    EXPECT_EQ(buckets[2].label, "6min+");
    EXPECT_EQ(buckets[2].count, 2);
    EXPECT_THAT(read({.tab = NavTab::focus, .focusPeriod = FocusPeriod::yesterday}).durationBuckets,
        IsEmpty());
}

TEST_F(SessionReportsTest, MeansHaveThreeGroupsWhateverThePeriod)
{
    for (const double seconds : {9.9, 299.9, 300.0, 600.0, 601.0}) {
        session("Editor", 100, 100 + seconds);
    }
    for (const auto& period : allCases<FocusPeriod>) {
        const auto days
            = read({.tab = NavTab::focus, .focusPeriod = period.value}).dailyAvgSessions;
        ASSERT_THAT(days, SizeIs(1));
        EXPECT_EQ(days[0].date, "01-01");
        EXPECT_EQ(days[0].avgUnder5, 5);
        EXPECT_EQ(days[0].avg5to10, 7.5);
        EXPECT_EQ(days[0].avgOver10, 10.02);
    }
}

std::vector<std::string> dailyRows(const StoreReader& store)
{
    std::vector<std::string> rows = store.rows(kDailyAvgSessionsSql);
    for (std::string& row : rows) {
        for (auto at = row.find("NULL"); at != std::string::npos; at = row.find("NULL")) {
            row.replace(at, 4, "0.0");
        }
    }
    return rows;
}

/// A double as SQLite prints it in rows.
std::string printed(const StoreReader& store, double value)
{
    return store.value("SELECT " + shortestText(value) + " + 0.0");
}

TEST_F(SessionReportsTest, TheNarrowedHistoryHasTheSameMeans)
{
    std::mt19937 random(7);
    const auto upTo = [&random](double most) {
        return std::uniform_real_distribution<double>(0, most)(random);
    };
    const StoreReader store(path());
    for (int round = 0; round < 60; ++round) {
        store.exec("BEGIN; DELETE FROM app_sessions");
        for (int i = 0; i < 120; ++i) {
            const double start = i % 5 == 0 ? kNow - 7 * 86400 + std::round(upTo(4000)) / 1000 - 2
                                            : kNow - upTo(16 * 86400);
            store.exec(filled("INSERT INTO app_sessions (app_name, started_at, duration_sec) "
                              "VALUES ('{}', {}, {})",
                {i % 17 == 0 ? "launchd" : "Editor",
                    i % 29 == 0 ? "'no time'" : shortestText(start), shortestText(upTo(1200))}));
        }
        store.exec("COMMIT");
        std::vector<std::string> narrowed;
        for (const DailyAvgSession& day : queryDailyAvgSessions(store.handle())) {
            narrowed.push_back(day.date + "|" + printed(store, day.avgUnder5) + "|"
                + printed(store, day.avg5to10) + "|" + printed(store, day.avgOver10));
        }
        EXPECT_EQ(narrowed, dailyRows(store));
    }
}

TEST_F(SessionReportsTest, TheMeansOfDaysDontWalkThroughHistory)
{
    const StoreReader store(path());
    store.exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 50000) "
               "INSERT INTO app_sessions (app_name, started_at, duration_sec) "
               "SELECT 'Editor', 1700000000.5 + i * 60, 50 FROM n");
    session("Editor", 0, 60);
    int thousandSteps = 0;
    sqlite3_progress_handler(
        store.handle(), 1000,
        [](void* count) {
            ++*static_cast<int*>(count);
            return 0;
        },
        &thousandSteps);
    EXPECT_THAT(queryDailyAvgSessions(store.handle()), SizeIs(1));
    EXPECT_LT(thousandSteps, 10); // a walk through all rows takes at least 50
}

} // namespace
} // namespace quillbrook
