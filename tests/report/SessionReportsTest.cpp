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

TEST_F(SessionReportsTest, ARunningSessionStandsFirstWhenItIsTheNewest)
{
    session("Editor", 10, 20);
    session("Mail", 20, 30);
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Web', 1767200000)");
    const auto rows = sessions();
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_EQ(rows[0].appName, "Web");
    EXPECT_EQ(rows[1].appName, "Mail");
    EXPECT_EQ(rows[1].endedAt, kMidnight + 30);
    EXPECT_EQ(rows[1].durationSec, 10);
}

TEST_F(SessionReportsTest, ARunningSessionOlderThanAnHourIsNotOfThatHour)
{
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Web', 1767247199)");
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Mail', 1767247200)");
    const auto rows = read({.tab = NavTab::session}).recentSessions; // 1767250800 is now
    ASSERT_THAT(rows, SizeIs(1));
    EXPECT_EQ(rows[0].appName, "Mail");
}

// The lists and means are cut by different conditions, and are meant to be.
TEST_F(SessionReportsTest, EachReportLeavesOutItsOwnProgramsOfTheSystem)
{
    for (const char* name : {"loginwindow", "WindowServer", "kernel_task", "launchd",
             "ScreenSaverEngine", "Quillbrook", "MyLoginTool", "xscreensaver-demo", "Editor"}) {
        session(name, 100, 160);
    }
    const auto rows = sessions();
    ASSERT_THAT(rows, SizeIs(1));
    EXPECT_EQ(rows[0].appName, "Editor");
    const auto focus = read({.tab = NavTab::focus});
    EXPECT_EQ(focus.focusHours[0].activeSec, 9 * 60);
    ASSERT_THAT(focus.durationBuckets, SizeIs(1));
    EXPECT_EQ(focus.durationBuckets[0].count, 3);
    exec("UPDATE app_sessions SET duration_sec = 90 WHERE app_name = 'MyLoginTool'");
    exec("UPDATE app_sessions SET duration_sec = 9000 WHERE app_name = 'launchd'");
    const auto means = read({.tab = NavTab::focus}).dailyAvgSessions;
    ASSERT_THAT(means, SizeIs(1));
    EXPECT_EQ(means[0].avgUnder5, 1.17); // 70 s of three sessions
    EXPECT_EQ(means[0].avgOver10, 0);
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

TEST_F(SessionReportsTest, AListHoldsTwoHundredIdlePeriodsNewestFirst)
{
    exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 204) "
         "INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type) "
         "SELECT 1767196800 + i, 1767196801 + i, 1, i % 4 + 1 FROM n");
    const auto idles = read({.tab = NavTab::idles, .idlesPeriod = IdlesPeriod::today}).recentIdles;
    ASSERT_THAT(idles, SizeIs(200));
    EXPECT_EQ(idles.front().startedAt, kMidnight + 204);
    EXPECT_EQ(idles.front().endedAt, kMidnight + 205);
    EXPECT_EQ(idles.front().durationSec, 1);
    EXPECT_EQ(idles[1].sourceType, 4);
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

TEST_F(SessionReportsTest, TheFirstHourOfADayIsOneElement)
{
    machine.clock.set(kMidnight + 1800);
    const auto hours = focusHours(FocusPeriod::today);
    ASSERT_THAT(hours, SizeIs(1));
    EXPECT_EQ(hours[0].hour, 0);
    machine.clock.set(kMidnight - 1);
    EXPECT_THAT(focusHours(FocusPeriod::today), SizeIs(24));
}

TEST_F(SessionReportsTest, WithoutSessionsTheHoursAreZeroAndTheLengthsEmpty)
{
    const auto data = read({.tab = NavTab::focus, .focusPeriod = FocusPeriod::month});
    ASSERT_THAT(data.focusHours, SizeIs(24));
    for (const FocusHour& hour : data.focusHours) {
        EXPECT_EQ(hour.activeSec, 0);
        EXPECT_EQ(hour.activeDays, 0);
    }
    EXPECT_THAT(data.durationBuckets, IsEmpty());
    EXPECT_THAT(data.dailyAvgSessions, IsEmpty());
}

TEST_F(SessionReportsTest, ShortSessionsAreFocusButNoLength)
{
    session("Editor", 100, 109.5);
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Running', 1767200000)");
    exec("INSERT INTO app_sessions (app_name, started_at, ended_at, duration_sec) "
         "VALUES ('Empty', 1767200000, 1767200100, 0)");
    const auto data = read({.tab = NavTab::focus});
    EXPECT_EQ(data.focusHours[0].activeSec, 9.5);
    EXPECT_THAT(data.durationBuckets, IsEmpty());
    EXPECT_THAT(data.dailyAvgSessions, IsEmpty());
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

TEST_F(SessionReportsTest, JanuaryStandsBeforeDecember)
{
    session("Editor", -3600, -3540);
    session("Editor", 100, 220);
    const auto days = read({.tab = NavTab::focus}).dailyAvgSessions;
    ASSERT_THAT(days, SizeIs(2));
    EXPECT_EQ(days[0].date, "01-01");
    EXPECT_EQ(days[0].avgUnder5, 2);
    EXPECT_EQ(days[0].avg5to10, 0);
    EXPECT_EQ(days[1].date, "12-31");
}

TEST_F(SessionReportsTest, EveryLengthHasItsBucketForAllOfHistory)
{
    for (const double seconds : {30.0, 60.0, 120.0, 180.0, 240.0, 300.0, 360.0}) {
        session("Editor", -400 * 86400.0, -400 * 86400.0 + seconds);
    }
    const auto buckets
        = read({.tab = NavTab::focus, .focusPeriod = FocusPeriod::all}).durationBuckets;
    const std::vector<std::pair<std::string, std::int64_t>> wanted = {{"<1min", 0}, {"1-2min", 60},
        {"2-3min", 120}, {"3-4min", 180}, {"4-5min", 240}, {"5-6min", 300}, {"6min+", 360}};
    ASSERT_THAT(buckets, SizeIs(wanted.size()));
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(buckets[i].label, wanted[i].first);
        EXPECT_EQ(buckets[i].rangeMin, wanted[i].second);
        EXPECT_EQ(buckets[i].count, 1);
    }
    EXPECT_THAT(
        read({.tab = NavTab::focus, .focusPeriod = FocusPeriod::month}).durationBuckets, IsEmpty());
}

std::vector<std::string> dailyRows(const StoreReader& store)
{
    std::vector<std::string> rows = store.rows(std::string(kDailyAvgSessionsSql));
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
