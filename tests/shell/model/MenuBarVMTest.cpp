#include "shell/model/MenuBarVM.h"
#include "base/Text.h"
#include "engine/MonitorEngine.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;

constexpr double kNoon = 1767240000; // 2026-01-01T12:00:00+08:00
constexpr double kToday = 1767196800; // the midnight before

class MenuBarVMTest : public testing::Test {
protected:
    fs::path storePath() const { return directory.path() / "monitor.db"; }

    /// A store with the engine's schema and nothing in it.
    void makeStore()
    {
        MonitorEngine engine(machine.platform());
        engine.start();
        engine.stop();
        machine.endProcess();
    }

    void exec(const std::string& sql) const { StoreReader(storePath()).exec(sql); }

    void addSession(double startedAt, double durationSec, const std::string& name = "Editor") const
    {
        exec(filled("INSERT INTO app_sessions (app_name, started_at, duration_sec) "
                    "VALUES ('{}', {}, {})",
            {name, shortestText(startedAt), shortestText(durationSec)}));
    }

    void addAlert(double time) const
    {
        exec(filled("INSERT INTO alerts (timestamp, alert_type, severity, message) "
                    "VALUES ({}, 'cpu', 'warning', '')",
            {shortestText(time)}));
    }

    void addKeys(double time, const std::string& method, int count) const
    {
        exec(filled("INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
                    "VALUES ({}, 'Editor', '{}', {})",
            {shortestText(time), method, std::to_string(count)}));
    }

    std::vector<std::string> titles(const MenuBarVM& model) const
    {
        std::vector<std::string> found;
        for (const auto& entry : model.menu()) {
            found.push_back(entry ? entry->title : "-");
        }
        return found;
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kNoon};
};

TEST_F(MenuBarVMTest, WithoutAStoreTheInitialValuesStand)
{
    machine.accessibility.setTrusted(false);
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.activeHoursStr.get(), "--");
    EXPECT_EQ(model.yearProgressPct.get(), 0);
    EXPECT_FALSE(model.permissionMissing.get());
    EXPECT_FALSE(model.isWarning());
    EXPECT_FALSE(model.isFastRefreshing());
    EXPECT_THAT(titles(model),
        ElementsAre("Alerts：0", "Hours：--", "-", "刷新数据", "-", "开机自启：关", "退出"));
    EXPECT_FALSE(fs::exists(storePath()));
}

TEST_F(MenuBarVMTest, AStoreThatAppearsIsReadFiveMinutesLater)
{
    makeStore();
    addSession(kToday, 60);
    fs::rename(storePath(), directory.path() / "elsewhere");
    const MenuBarVM model(machine.platform());
    fs::rename(directory.path() / "elsewhere", storePath());
    machine.runFor(299);
    EXPECT_EQ(model.activeHoursStr.get(), "--");
    machine.runFor(1);
    EXPECT_EQ(model.activeHoursStr.get(), "0h1m");
}

TEST_F(MenuBarVMTest, TheSlowTimerReadsEveryFiveMinutes)
{
    makeStore();
    const MenuBarVM model(machine.platform());
    addSession(kToday, 3660);
    machine.runFor(299);
    EXPECT_EQ(model.activeHoursStr.get(), "0h0m");
    machine.runFor(1);
    EXPECT_EQ(model.activeHoursStr.get(), "1h1m");
    addSession(kToday + 5000, 60);
    machine.runFor(300);
    EXPECT_EQ(model.activeHoursStr.get(), "1h2m");
}

TEST_F(MenuBarVMTest, HoursAndMinutesAreCutAndNotPadded)
{
    makeStore();
    MenuBarVM model(machine.platform());
    addSession(kToday + 1, 3 * 3600 + 5 * 60 + 59.9);
    model.refreshStats();
    EXPECT_EQ(model.activeHoursStr.get(), "3h5m");
    addSession(kToday + 2, 25 * 3600);
    model.refreshStats();
    EXPECT_EQ(model.activeHoursStr.get(), "28h5m");
}

TEST_F(MenuBarVMTest, OnlyFinishedSessionsOfPeopleAtWorkTodayCount)
{
    makeStore();
    addSession(kToday, 60);
    addSession(kToday - 1, 600);
    addSession(kToday + 10, 600, "loginwindow");
    addSession(kToday + 11, 600, "Quillbrook");
    addSession(kToday + 12, 600, "My Login Helper");
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Editor', 1767197000)");
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.activeHoursStr.get(), "0h1m");
}

TEST_F(MenuBarVMTest, TokensFollowTheRatesAndAreCut)
{
    makeStore();
    addKeys(kToday, "shuangpin", 1000);
    addKeys(kToday, "english", 1000);
    addKeys(kToday, "quanpin", 1000);
    addKeys(kToday, "other", 1003);
    addKeys(kToday - 1, "english", 100000);
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.tokenCount.get(), 819); // 819.456
}

TEST_F(MenuBarVMTest, TokensAreGroupedInTheMenuAndAlertsAreNot)
{
    makeStore();
    addKeys(kToday, "english", 5000000);
    exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1234) "
         "INSERT INTO alerts (timestamp, alert_type, severity, message) "
         "SELECT 1767197000, 'cpu', 'warning', '' FROM n");
    machine.loginItem.setEnabled(true);
    const MenuBarVM model(machine.platform());
    EXPECT_THAT(titles(model),
        ElementsAre("Alerts：1234", "Hours：0h0m", "Tokens：1,240,000", "-", "刷新数据", "-",
            "开机自启：开", "退出"));
}

TEST_F(MenuBarVMTest, AnAlertTurnsTheFastTimerOnUntilTheNextDay)
{
    makeStore();
    addAlert(kToday - 1);
    MenuBarVM model(machine.platform());
    EXPECT_FALSE(model.isWarning());
    addAlert(kToday);
    machine.runFor(300);
    EXPECT_TRUE(model.isWarning());
    EXPECT_TRUE(model.isFastRefreshing());
    addSession(kToday + 1, 60);
    machine.runFor(60);
    EXPECT_EQ(model.activeHoursStr.get(), "0h1m");
    addSession(kToday + 2, 60);
    machine.runFor(60);
    EXPECT_EQ(model.activeHoursStr.get(), "0h2m");

    machine.runFor(kToday + 86400 - machine.clock.now());
    EXPECT_EQ(model.alertCount.get(), 0);
    EXPECT_EQ(model.activeHoursStr.get(), "0h0m");
    EXPECT_FALSE(model.isFastRefreshing());
    addSession(machine.clock.now(), 60);
    machine.runFor(299);
    EXPECT_EQ(model.activeHoursStr.get(), "0h0m");
}

TEST_F(MenuBarVMTest, AnExistingFastTimerKeepsItsRhythm)
{
    makeStore();
    machine.accessibility.setTrusted(false);
    MenuBarVM model(machine.platform());
    machine.runFor(59);
    model.refreshStats();
    addSession(kToday, 60);
    machine.runFor(1);
    EXPECT_EQ(model.activeHoursStr.get(), "0h1m");
}

TEST_F(MenuBarVMTest, ATimerThatWasSwitchedOffAndOnRunsOnce)
{
    makeStore();
    machine.accessibility.setTrusted(false);
    MenuBarVM model(machine.platform());
    machine.runFor(30);
    machine.accessibility.setTrusted(true);
    model.refreshStats();
    machine.accessibility.setTrusted(false);
    model.refreshStats();
    int refreshes = 0;
    const Subscription subscription = model.permissionMissing.observe([&](bool) { ++refreshes; });
    machine.runFor(120);
    EXPECT_EQ(refreshes, 2);
}

TEST_F(MenuBarVMTest, AMissingPermissionIsSeenAtTheNextRefresh)
{
    makeStore();
    const MenuBarVM model(machine.platform());
    machine.accessibility.setTrusted(false);
    EXPECT_FALSE(model.permissionMissing.get());
    machine.runFor(300);
    EXPECT_TRUE(model.permissionMissing.get());
    EXPECT_TRUE(model.isWarning());
    machine.accessibility.setTrusted(true);
    machine.runFor(60);
    EXPECT_FALSE(model.isWarning());
    EXPECT_FALSE(model.isFastRefreshing());
}

TEST_F(MenuBarVMTest, AStoreThatGoesAwayLeavesEverythingAsItWas)
{
    makeStore();
    addSession(kToday, 60);
    addAlert(kToday);
    MenuBarVM model(machine.platform());
    fs::remove(storePath());
    machine.accessibility.setTrusted(false);
    model.refreshStats();
    EXPECT_EQ(model.activeHoursStr.get(), "0h1m");
    EXPECT_FALSE(model.permissionMissing.get());
    EXPECT_TRUE(model.isFastRefreshing());
}

TEST_F(MenuBarVMTest, AStatementThatFailsReadsZero)
{
    makeStore();
    addSession(kToday, 60);
    addAlert(kToday);
    exec("DROP TABLE app_sessions");
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.activeHoursStr.get(), "0h0m");
    EXPECT_EQ(model.alertCount.get(), 1);
}

TEST_F(MenuBarVMTest, AFileThatIsNoStoreReadsZero)
{
    std::ofstream(storePath()) << "this is no database, however long the text may be";
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.activeHoursStr.get(), "0h0m");
    EXPECT_EQ(model.tokenCount.get(), 0);
}

TEST_F(MenuBarVMTest, FiguresBeyondAllBoundsStopNothing)
{
    makeStore();
    exec("INSERT INTO app_sessions (app_name, started_at, duration_sec) "
         "VALUES ('Editor', 1767197000, 1e300), ('Editor', 1767197001, 'long')");
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.activeHoursStr.get(), "2562047788015215h30m");
}

TEST_F(MenuBarVMTest, WhatIsNotFiniteIsAbsent)
{
    makeStore();
    addSession(kToday, 60);
    addAlert(kToday);
    addKeys(kToday, "english", 1000);
    for (const char* infinity : {"9e999", "-9e999"}) {
        exec(filled("INSERT INTO app_sessions (app_name, started_at, duration_sec) "
                    "VALUES ('Editor', 1767197000, {}), ('Editor', {}, 60);"
                    "INSERT INTO alerts (timestamp, alert_type, severity, message) "
                    "VALUES ({}, 'cpu', 'warning', '');"
                    "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
                    "VALUES (1767197000, 'Editor', 'english', {}), ({}, 'Editor', 'english', 5)",
            {infinity, infinity, infinity, infinity, infinity}));
    }
    const MenuBarVM model(machine.platform());
    EXPECT_EQ(model.activeHoursStr.get(), "0h1m");
    EXPECT_EQ(model.alertCount.get(), 1);
    EXPECT_EQ(model.tokenCount.get(), 248);
}

TEST_F(MenuBarVMTest, TheYearsProgressIsThatOfTheLocalCalendar)
{
    makeStore();
    MenuBarVM model(machine.platform());
    EXPECT_EQ(model.yearProgressPct.get(), 1.0 / 365);
    machine.timeZone.setSecondsFromUtc(-43200);
    model.refreshStats();
    EXPECT_EQ(model.yearProgressPct.get(), 1.0); // still the last day of 2025
    machine.timeZone.setSecondsFromUtc(0);
    machine.clock.set(1835308800); // 2028-02-28T00:00:00Z
    model.refreshStats();
    EXPECT_EQ(model.yearProgressPct.get(), 59.0 / 366);
}

TEST_F(MenuBarVMTest, TogglingSwitchesTheLoginItemAndRecordsIt)
{
    MenuBarVM model(machine.platform());
    model.toggleLoginItem();
    EXPECT_TRUE(machine.loginItem.isEnabled());
    EXPECT_TRUE(machine.userDefaults.boolForKey("loginItemRegistered"));
    model.toggleLoginItem();
    EXPECT_FALSE(machine.loginItem.isEnabled());
    EXPECT_FALSE(machine.userDefaults.boolForKey("loginItemRegistered"));
}

TEST_F(MenuBarVMTest, ARefusedToggleIsALineAndRecordsNothing)
{
    MenuBarVM model(machine.platform());
    machine.loginItem.refuse(LoginItemFailure{"not allowed"});
    testing::internal::CaptureStdout();
    model.toggleLoginItem();
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(), "⚠️ 开机自启切换失败: not allowed\n");
    EXPECT_TRUE(machine.userDefaults.all().empty());
}

TEST_F(MenuBarVMTest, AModelThatIsGoneLeavesNothingRunning)
{
    makeStore();
    machine.accessibility.setTrusted(false);
    std::optional<MenuBarVM> model(std::in_place, machine.platform());
    model.reset();
    machine.runFor(600);
}

} // namespace
} // namespace quillbrook
