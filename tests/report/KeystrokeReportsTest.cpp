#include "tests/report/ReportFixture.h"

#include "report/KeystrokeReports.h"

namespace quillbrook {
namespace {

using testing::SizeIs;

using KeystrokeReportsTest = ReportFixture;

TEST_F(KeystrokeReportsTest, NoKeysAreTwentyFourEmptyHours)
{
    const auto data = read({.tab = NavTab::keylog});
    ASSERT_THAT(data.keylogHourly, SizeIs(24));
    for (int hour = 0; hour < 24; ++hour) {
        const KeylogHourly& each = data.keylogHourly[static_cast<std::size_t>(hour)];
        EXPECT_EQ(each.hour, hour);
        EXPECT_EQ(each.keystrokes, 0);
        EXPECT_EQ(each.tokens, 0);
        EXPECT_EQ(each.durationSeconds, 0);
        EXPECT_EQ(dominantMethod(each.apps), std::nullopt);
    }
    EXPECT_EQ(data.tpm, 0);
}

TEST_F(KeystrokeReportsTest, AnHourIsChargedAtItsDominantMethodAndTheTotalAtEachOwn)
{
    keys(3660, "Editor", "'english'", 100);
    keys(3660, "Mail", "'quanpin'", 10);
    const auto data = read({.tab = NavTab::keylog});
    EXPECT_EQ(data.keylogHourly[1].tokens, 0.248 * 110);
    EXPECT_EQ(data.keylogHourly[1].sessionCount, 2);
    EXPECT_EQ(data.totalKeylogTokens, 0.248 * 100 + 0.152 * 10);
    EXPECT_EQ(data.totalKeylogKeystrokes, 110);
    EXPECT_EQ(data.totalActiveKeylogMinutes, 1);
    EXPECT_EQ(data.tpm, 0.248 * 100 + 0.152 * 10);
}

TEST_F(KeystrokeReportsTest, TheDominantMethodHasMoreKeysThanEachOther)
{
    EXPECT_EQ(dominantMethod({{"A", {5, "other"}}, {"B", {3, "english"}}, {"C", {3, "english"}}}),
        "english");
    EXPECT_EQ(dominantMethod({{"A", {5, "quanpin"}}, {"B", {5, "english"}}}), "english");
    EXPECT_EQ(dominantMethod({{"A", {0, "quanpin"}}}), "quanpin");
}

TEST_F(KeystrokeReportsTest, HoursHaveNoLength)
{
    for (int hour = 0; hour < 24; ++hour) {
        keys(hour * 3600 + 60, "Editor", "'english'", 5);
    }
    for (const KeylogHourly& hour : read({.tab = NavTab::keylog}).keylogHourly) {
        EXPECT_EQ(hour.keystrokes, 5);
        EXPECT_EQ(hour.durationSeconds, 0);
    }
}

TEST_F(KeystrokeReportsTest, KeysBelongToTheirDay)
{
    keys(-60, "Editor", "'english'", 3);
    keys(60, "Editor", "'english'", 4);
    EXPECT_EQ(read({.tab = NavTab::today}).totalKeylogKeystrokes, 4);
    EXPECT_EQ(
        read({.tab = NavTab::today, .todayPeriod = TodayPeriod::yesterday}).totalKeylogKeystrokes,
        3);
    EXPECT_EQ(
        read({.tab = NavTab::keylog, .keylogPeriod = KeylogPeriod::week}).totalKeylogKeystrokes, 7);
}

TEST_F(KeystrokeReportsTest, AnApplicationHasTheMethodOfItsLastRow)
{
    keys(60, "Editor", "'english'", 100);
    keys(60, "Editor", "'shuangpin'", 10);
    const auto data = read({.tab = NavTab::keylog});
    EXPECT_EQ(data.keylogHourly[0].apps.at("Editor"), (KeylogApp{110, "shuangpin"}));
    EXPECT_EQ(data.totalKeylogTokens, 0.267 * 110);
}

TEST_F(KeystrokeReportsTest, AnUnknownMethodHasTheLowRateAndNoMethodNoKeys)
{
    keys(60, "Editor", "'wubi'", 100);
    keys(120, "Editor", "NULL", 100);
    const auto data = read({.tab = NavTab::keylog});
    EXPECT_EQ(data.totalKeylogTokens, 0.152 * 100);
    EXPECT_EQ(data.totalKeylogKeystrokes, 100);
}

// The division by 60 keeps its fraction, so that flushes are counted and not minutes of the clock.
TEST_F(KeystrokeReportsTest, ActiveMinutesAreDistinctTimestamps)
{
    keys(60.25, "Editor", "'english'", 1);
    keys(60.25, "Mail", "'english'", 1);
    keys(60.5, "Editor", "'english'", 1);
    EXPECT_EQ(read({.tab = NavTab::keylog}).totalActiveKeylogMinutes, 2);
}

TEST_F(KeystrokeReportsTest, OnlyThePageOfKeysFollowsTheComputersZone)
{
    machine.timeZone.setSecondsFromUtc(0);
    keys(12 * 3600, "Editor", "'english'", 5); // 04:00 in UTC
    EXPECT_EQ(read({.tab = NavTab::keylog}).keylogHourly[4].keystrokes, 5);
    EXPECT_EQ(read({.tab = NavTab::today}).keylogHourly[12].keystrokes, 5);
}

TEST_F(KeystrokeReportsTest, WestOfGreenwichThePageOfKeysIsEmpty)
{
    machine.timeZone.setSecondsFromUtc(-18000);
    keys(12 * 3600, "Editor", "'english'", 5);
    EXPECT_EQ(read({.tab = NavTab::keylog}).totalKeylogKeystrokes, 0);
    EXPECT_EQ(read({.tab = NavTab::today}).totalKeylogKeystrokes, 5);
}

TEST_F(KeystrokeReportsTest, CountsThatNoVersionWroteAreBounded)
{
    exec("INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) VALUES "
         "(1767200000, 'A', 'english', 9223372036854775807), "
         "(1767200000, 'B', 'english', 9223372036854775807), (1767200000, 'C', 'other', 'many'), "
         "(1e300, 'D', 'other', 3)");
    EXPECT_EQ(read({.tab = NavTab::keylog}).totalKeylogKeystrokes, 9223372036854775807);
}

} // namespace
} // namespace quillbrook
