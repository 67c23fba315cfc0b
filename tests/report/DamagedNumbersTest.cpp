#include "tests/report/ReportFixture.h"

#include <cmath>
#include <numeric>

namespace quillbrook {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// A store in which each number of each table is once positive and once negative infinity. They
/// count as absent, and the sound rows as if nothing else were there.
class DamagedNumbersTest : public ReportFixture {
protected:
    DamagedNumbersTest()
    {
        session("Editor", 3600, 4500, "com.apple.dt.Xcode");
        session("Mail", 4500, 4530);
        exec("INSERT INTO boot_events (timestamp, boot_time) VALUES (1767200000, 5)");
        exec("INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
             "VALUES (1767200400, 'Editor', 'english', 100)");
        exec("INSERT INTO alerts (timestamp, alert_type, severity, message) "
             "VALUES (1767200000.5, 'high_load', 'warning', 'm')");
        for (const char* infinity : {"9e999", "-9e999"}) {
            damage(infinity);
        }
    }

    void damage(const std::string& infinity)
    {
        const std::string rows
            = R"(INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec)
            VALUES ('Ghost', 'g', {}, 1767201000, 100), ('Ghost', 'g', 1767200900, {}, 100),
                ('Ghost', 'g', 1767200900, 1767201000, {}), ('Editor', 'com.apple.dt.Xcode', {}, {}, {});
            INSERT INTO idle_periods (started_at, ended_at, duration_sec)
            VALUES ({}, 1767201000, 100), (1767200900, {}, {});
            INSERT INTO boot_events (timestamp, boot_time) VALUES ({}, 6), (1767200000, {});
            INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count)
            VALUES ({}, 'Ghost', 'english', 7), (1767200400, 'Editor', 'english', {});
            INSERT INTO alerts (timestamp, alert_type, severity, message) VALUES ({}, 't', 's', 'm'))";
        const std::string_view value = infinity;
        exec(filled(rows,
            {value, value, value, value, value, value, value, value, value, value, value, value,
                value, value}));
    }
};

TEST_F(DamagedNumbersTest, TodayHasTheSoundSessionsAndKeys)
{
    const auto data = read({.tab = NavTab::today});
    ASSERT_TRUE(data.overview);
    EXPECT_EQ(data.overview->firstActivity, kMidnight + 3600);
    EXPECT_EQ(data.overview->lastActivity, kMidnight + 4530);
    EXPECT_EQ(data.overview->sessionCount, 2);
    EXPECT_EQ(data.overview->activeAppCount, 2);
    EXPECT_EQ(data.overview->totalActiveHours, 930.0 / 3600);
    EXPECT_EQ(data.overview->avgSessionMinutes, 930.0 / 60 / 2);
    EXPECT_EQ(data.overview->longestSessionMinutes, 15);
    ASSERT_THAT(data.appUsage, SizeIs(2));
    EXPECT_EQ(data.appUsage[0].totalSeconds, 900);
    EXPECT_EQ(data.appUsage[1].totalSeconds, 30);
    ASSERT_THAT(data.hourlyTimeline, SizeIs(1));
    EXPECT_EQ(data.hourlyTimeline[0].total, 930);
    EXPECT_EQ(data.totalKeylogKeystrokes, 100);
    EXPECT_EQ(data.totalKeylogTokens, 24.8);
    EXPECT_EQ(data.totalActiveKeylogMinutes, 1);
}

TEST_F(DamagedNumbersTest, PastHasTheSoundSessionsAndBoots)
{
    for (const auto& period : allCases<HistoryPeriod>) {
        if (period.value == HistoryPeriod::yesterday) {
            continue;
        }
        const auto data = read({.tab = NavTab::history, .historyPeriod = period.value});
        ASSERT_TRUE(data.historyOverview);
        EXPECT_EQ(data.historyOverview->totalActiveHours, 930.0 / 3600) << period.rawValue;
        EXPECT_EQ(data.historyOverview->activeAppCount, 2);
        EXPECT_EQ(data.historyOverview->appSwitchCount, 2);
        EXPECT_EQ(data.historyOverview->bootCount, 1);
        ASSERT_THAT(data.appUsage, SizeIs(2));
        EXPECT_EQ(data.appUsage[0].totalSeconds, 900);
        EXPECT_EQ(data.appUsage[0].sessionCount, 1);
    }
}

TEST_F(DamagedNumbersTest, HabitHasTheSoundSessions)
{
    const auto data = read({.tab = NavTab::habit});
    EXPECT_EQ(data.totalActiveSeconds, 930);
    ASSERT_THAT(data.categoryUsage, SizeIs(2));
    EXPECT_EQ(data.categoryUsage[0].totalSeconds, 900);
    EXPECT_EQ(data.categoryUsage[0].sessionCount, 1);
    EXPECT_EQ(data.categoryUsage[1].appCount, 1);
    EXPECT_EQ(data.categoryUsage[0].pct + data.categoryUsage[1].pct, 1);
}

TEST_F(DamagedNumbersTest, TheTrendHasTheSoundSessions)
{
    DataProvider provider(machine.platform());
    provider.selectedTab.set(NavTab::habit);
    provider.refresh();
    machine.runFor(0);
    double hours = 0;
    for (const CategoryTrendPoint& point : provider.categoryTrend.get()) {
        EXPECT_TRUE(std::isfinite(point.hours));
        EXPECT_EQ(point.date, kMidnight);
        hours += point.hours;
    }
    // The trend asks for no end: the session without a finite one counts by its length.
    EXPECT_DOUBLE_EQ(hours, (930.0 + 2 * 100) / 3600);
}

TEST_F(DamagedNumbersTest, TokensHaveTheSoundMinutes)
{
    const auto data = read({.tab = NavTab::keylog});
    EXPECT_EQ(data.totalKeylogKeystrokes, 100);
    EXPECT_EQ(data.totalKeylogTokens, 24.8);
    EXPECT_EQ(data.totalActiveKeylogMinutes, 1);
    EXPECT_EQ(data.keylogHourly[1].keystrokes, 100);
    EXPECT_THAT(data.keylogHourly[7].apps, IsEmpty()); // where an infinite time would fall
}

TEST_F(DamagedNumbersTest, AlertsHaveTheSoundTimes)
{
    const auto data = read({.tab = NavTab::alerts, .alertsPeriod = AlertsPeriod::all});
    EXPECT_THAT(data.alerts, SizeIs(1));
    EXPECT_EQ(data.alertCount, 1);
}

TEST_F(DamagedNumbersTest, ListsLeaveOutWhatHasNoTimeAndShowTheRest)
{
    const auto sessions
        = read({.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today}).recentSessions;
    ASSERT_THAT(sessions, SizeIs(6));
    for (const SessionDetail& session : sessions) {
        EXPECT_TRUE(std::isfinite(session.startedAt));
        EXPECT_TRUE(std::isfinite(session.durationSec));
        EXPECT_TRUE(!session.endedAt || std::isfinite(*session.endedAt));
    }
    const auto idles = read({.tab = NavTab::idles, .idlesPeriod = IdlesPeriod::today}).recentIdles;
    ASSERT_THAT(idles, SizeIs(2));
    for (const IdleRecord& idle : idles) {
        EXPECT_EQ(idle.startedAt, 1767200900);
        EXPECT_FALSE(idle.endedAt);
        EXPECT_EQ(idle.durationSec, 0);
    }
}

TEST_F(DamagedNumbersTest, ListsKeepTheirTwoHundredForSoundRows)
{
    for (int i = 0; i < 200; ++i) {
        exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Ghost', 9e999);"
             "INSERT INTO idle_periods (started_at) VALUES (9e999)");
    }
    EXPECT_THAT(
        read({.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today}).recentSessions,
        SizeIs(6));
    EXPECT_THAT(
        read({.tab = NavTab::idles, .idlesPeriod = IdlesPeriod::today}).recentIdles, SizeIs(2));
}

TEST_F(DamagedNumbersTest, FocusHasTheSoundSessions)
{
    for (const FocusPeriod period : {FocusPeriod::today, FocusPeriod::week, FocusPeriod::all}) {
        const auto data = read({.tab = NavTab::focus, .focusPeriod = period});
        const double seconds = std::accumulate(data.focusHours.begin(), data.focusHours.end(), 0.0,
            [](double sum, const FocusHour& hour) { return sum + hour.activeSec; });
        EXPECT_EQ(seconds, 930);
        ASSERT_THAT(data.durationBuckets, SizeIs(2));
        EXPECT_EQ(data.durationBuckets[0].count, 1);
        EXPECT_EQ(data.durationBuckets[1].count, 1);
        ASSERT_THAT(data.dailyAvgSessions, SizeIs(1));
        EXPECT_EQ(data.dailyAvgSessions[0].avgOver10, 15);
    }
}

TEST_F(DamagedNumbersTest, SumsBeyondAllNumbersStayFinite)
{
    for (const char* size : {"1.7e308", "-1.7e308"}) {
        exec("DELETE FROM app_sessions");
        for (int i = 0; i < 3; ++i) {
            exec(filled("INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, "
                        "duration_sec) VALUES ('Editor', 'e', 1767200000, 1767200100, {})",
                {size}));
        }
        const double bound = *size == '-' ? -9e18 : 9e18;
        const auto today = read({.tab = NavTab::today});
        EXPECT_EQ(today.overview->totalActiveHours, bound / 3600);
        EXPECT_EQ(today.overview->longestSessionMinutes, bound / 60);
        EXPECT_EQ(today.appUsage[0].totalSeconds, bound);
        EXPECT_EQ(read({.tab = NavTab::history}).historyOverview->totalActiveHours, bound / 3600);
        const auto habit = read({.tab = NavTab::habit});
        EXPECT_EQ(habit.totalActiveSeconds, bound);
        EXPECT_TRUE(std::isfinite(habit.categoryUsage[0].pct));
        for (const DailyAvgSession& day : read({.tab = NavTab::focus}).dailyAvgSessions) {
            EXPECT_TRUE(std::isfinite(day.avgOver10));
        }
    }
}

} // namespace
} // namespace quillbrook
