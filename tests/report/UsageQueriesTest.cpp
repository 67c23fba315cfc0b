#include "tests/report/ReportFixture.h"

#include "categories/CategoryStore.h"
#include "report/PeriodFilters.h"
#include "report/UsageQueries.h"

namespace quillbrook {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

using UsageQueriesTest = ReportFixture;

TEST_F(UsageQueriesTest, AnEmptyStoreGivesZeros)
{
    const auto data = read({.tab = NavTab::today});
    ASSERT_TRUE(data.overview);
    EXPECT_EQ(data.overview->sessionCount, 0);
    EXPECT_EQ(data.overview->avgSessionMinutes, 0);
    EXPECT_EQ(data.overview->longestSessionMinutes, 0);
    EXPECT_FALSE(data.overview->firstActivity);
    EXPECT_FALSE(data.overview->lastActivity);
    EXPECT_THAT(data.hourlyTimeline, IsEmpty());
}

TEST_F(UsageQueriesTest, TheOverviewTellsOfClosedSessions)
{
    machine.kernelFigures.setBootTime(1767000000);
    session("Editor", 3600, 5400.5);
    session("Mail", 6000, 6060);
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Running', 1767240000.5)");
    const auto overview = *read({.tab = NavTab::today}).overview;
    EXPECT_EQ(overview.bootTime, 1767000000);
    EXPECT_EQ(overview.firstActivity, kMidnight + 3600);
    EXPECT_EQ(overview.lastActivity, kMidnight + 6060);
    EXPECT_EQ(overview.activeAppCount, 2);
    EXPECT_EQ(overview.sessionCount, 2);
    EXPECT_EQ(overview.appSwitchCount, 2);
    EXPECT_EQ(overview.totalActiveHours, 1860.5 / 3600);
    EXPECT_EQ(overview.avgSessionMinutes, 1860.5 / 60 / 2);
    EXPECT_EQ(overview.longestSessionMinutes, 1800.5 / 60);
}

TEST_F(UsageQueriesTest, YesterdaysOverviewHasTheBootOfNow)
{
    machine.kernelFigures.setBootTime(1767250000);
    session("Editor", -3600, -3000);
    session("Editor", 100, 200);
    const auto overview
        = *read({.tab = NavTab::today, .todayPeriod = TodayPeriod::yesterday}).overview;
    EXPECT_EQ(overview.bootTime, 1767250000);
    EXPECT_EQ(overview.firstActivity, kMidnight - 3600);
    EXPECT_EQ(overview.lastActivity, kMidnight - 3000);
    EXPECT_EQ(overview.sessionCount, 1);
}

TEST_F(UsageQueriesTest, FiguresLeaveOutTheProgramsOfTheSystem)
{
    for (const char* name : {"loginwindow", "WindowServer", "kernel_task", "launchd",
             "ScreenSaverEngine", "Quillbrook", "MyLoginTool", "xscreensaver-demo", "Editor"}) {
        session(name, 100, 160);
    }
    const auto today = read({.tab = NavTab::today});
    EXPECT_EQ(today.overview->sessionCount, 1);
    ASSERT_THAT(today.appUsage, SizeIs(1));
    EXPECT_EQ(today.appUsage[0].appName, "Editor");
    ASSERT_THAT(today.hourlyTimeline, SizeIs(1));
    EXPECT_THAT(today.hourlyTimeline[0].apps, SizeIs(1));
    EXPECT_EQ(today.hourlyTimeline[0].total, 60);
    const auto past = read({.tab = NavTab::history}).historyOverview;
    EXPECT_EQ(past->appSwitchCount, 1);
    EXPECT_EQ(past->activeAppCount, 1);
    EXPECT_EQ(past->totalActiveHours, 60.0 / 3600);
}

TEST_F(UsageQueriesTest, AnUnreadableBootTimeIsTheEpoch)
{
    machine.kernelFigures.setBootTime(std::nullopt);
    EXPECT_EQ(read({.tab = NavTab::today}).overview->bootTime, 0);
}

TEST_F(UsageQueriesTest, ALoginProgramCanBeTheLongestWithoutBeingCounted)
{
    session("MyLoginTool", 0, 600.5);
    session("Quillbrook", 0, 9000);
    session("Editor", 1000, 1060);
    const auto overview = *read({.tab = NavTab::today}).overview;
    EXPECT_EQ(overview.sessionCount, 1);
    EXPECT_EQ(overview.longestSessionMinutes, 600.5 / 60);
}

TEST_F(UsageQueriesTest, ASessionIsCutAtTheHour)
{
    session("Editor", 9 * 3600 + 3540, 10 * 3600 + 60);
    const auto timeline = read({.tab = NavTab::today}).hourlyTimeline;
    ASSERT_THAT(timeline, SizeIs(2));
    EXPECT_EQ(timeline[0].hour, 9);
    EXPECT_EQ(timeline[0].total, 60);
    EXPECT_EQ(timeline[1].hour, 10);
    EXPECT_EQ(timeline[1].apps.at(0).seconds, 60);
}

// SQLite makes a full hour in the middle of a session out of whole numbers and hands over the
// integer 3600. Read as doubles alone, the busiest hour of all would be missing from the day.
TEST_F(UsageQueriesTest, AFullHourInTheMiddleCountsThoughItIsAnInteger)
{
    session("Editor", 9 * 3600 + 1800.5, 11 * 3600 + 60.25);
    const auto timeline = read({.tab = NavTab::today}).hourlyTimeline;
    ASSERT_THAT(timeline, SizeIs(3));
    EXPECT_EQ(timeline[1].hour, 10);
    EXPECT_EQ(timeline[1].total, 3600);
}

TEST_F(UsageQueriesTest, ASessionOverMidnightBelongsToTheDayOfItsStart)
{
    session("Editor", -600, 600);
    EXPECT_THAT(read({.tab = NavTab::today}).hourlyTimeline, IsEmpty());
    const auto yesterday
        = read({.tab = NavTab::today, .todayPeriod = TodayPeriod::yesterday}).hourlyTimeline;
    ASSERT_THAT(yesterday, SizeIs(1));
    EXPECT_EQ(yesterday[0].hour, 23);
    EXPECT_EQ(yesterday[0].total, 600);
}

TEST_F(UsageQueriesTest, UnderThreeSecondsIsNoBlock)
{
    session("Editor", 10, 12.999);
    EXPECT_THAT(read({.tab = NavTab::today}).hourlyTimeline, IsEmpty());
    EXPECT_EQ(read({.tab = NavTab::today}).overview->sessionCount, 1);
    session("Mail", 20, 23);
    EXPECT_THAT(read({.tab = NavTab::today}).hourlyTimeline, SizeIs(1));
}

TEST_F(UsageQueriesTest, AnHoursApplicationsComeLargestFirst)
{
    session("A", 0, 60);
    session("B", 100, 400);
    const auto timeline = read({.tab = NavTab::today}).hourlyTimeline;
    EXPECT_EQ(timeline.at(0).apps.at(0).appName, "B");
    EXPECT_EQ(timeline.at(0).total, 360);
}

TEST_F(UsageQueriesTest, OneRowWithoutIdentifierMakesTheApplicationUnknown)
{
    session("Safari", 0, 60, "com.apple.Safari");
    session("Safari", 100, 160, "");
    session("Zoom", 200, 230, "us.zoom.xos");
    session("Zoom", 300, 330, "us.zoom.xos");
    session("Zzz", 400, 410, "");
    session("Zzz", 420, 430, "zzz.app");
    const auto apps = read({.tab = NavTab::history}).appUsage;
    ASSERT_THAT(apps, SizeIs(3));
    EXPECT_EQ(apps[0].bundleId, "unknown");
    EXPECT_EQ(apps[0].categoryLabel, "未分类");
    EXPECT_EQ(apps[0].sessionCount, 2);
    EXPECT_EQ(apps[0].totalSeconds, 120);
    EXPECT_EQ(apps[1].bundleId, "us.zoom.xos");
    EXPECT_EQ(apps[2].bundleId, "zzz.app");
}

TEST_F(UsageQueriesTest, RowsOfEqualDataHaveIdsOfTheirOwn)
{
    session("Editor", 0, 60);
    const auto first = read({.tab = NavTab::today});
    const auto second = read({.tab = NavTab::today});
    EXPECT_NE(first.appUsage.at(0).id, second.appUsage.at(0).id);
    EXPECT_NE(first.hourlyTimeline.at(0).apps.at(0).id, second.hourlyTimeline.at(0).apps.at(0).id);
}

TEST_F(UsageQueriesTest, TheListHoldsTwentyApplications)
{
    for (int i = 0; i < 25; ++i) {
        session("App " + std::to_string(i), i * 100, i * 100 + i + 1);
    }
    const auto apps = read({.tab = NavTab::history}).appUsage;
    ASSERT_THAT(apps, SizeIs(20));
    EXPECT_EQ(apps.front().appName, "App 24");
}

TEST_F(UsageQueriesTest, HistoryCountsDistinctBoots)
{
    exec("INSERT INTO boot_events (timestamp, boot_time) VALUES (1767200000, 5), (1767200001, 5), "
         "(1767200002, 6), (1700000000, 7)");
    EXPECT_EQ(read({.tab = NavTab::history}).historyOverview->bootCount, 2);
    EXPECT_EQ(read({.tab = NavTab::history, .historyPeriod = HistoryPeriod::all})
                  .historyOverview->bootCount,
        3);
    exec("DELETE FROM boot_events");
    EXPECT_EQ(read({.tab = NavTab::history}).historyOverview->bootCount, 0);
    exec("DROP TABLE boot_events");
    EXPECT_EQ(read({.tab = NavTab::history}).historyOverview->bootCount, 1);
}

} // namespace
} // namespace quillbrook
