#include "shell/model/LaunchFlow.h"
#include "engine/MonitorEngine.h"
#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/model/CrashReporter.h"
#include "shell/model/LaunchSurfaces.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kLaunch = 1767225600;

/// Windows that note what was asked of them.
class NotedSurfaces final : public LaunchSurfaces {
public:
    void showDashboard() override { notes.emplace_back("dashboard"); }
    void showPermissionSetup(bool isNewVersion, std::function<void()> onComplete) override
    {
        notes.emplace_back(isNewVersion ? "set-up after an update" : "set-up");
        goOn = std::move(onComplete);
    }
    void closePermissionSetup() override { notes.emplace_back("close set-up"); }
    void patchAboutMenuItem() override { notes.emplace_back("about item"); }

    std::vector<std::string> notes{};
    std::function<void()> goOn{};
};

class LaunchFlowTest : public testing::Test {
protected:
    LaunchFlowTest()
    {
        machine.bundleValues.set("CFBundleShortVersionString", "1.2.0");
        machine.loginItem.setEnabled(true);
        launchAgain();
    }

    /// Ends the process as it is, and begins another, which is not launched yet.
    void launchAgain()
    {
        flow.reset();
        engine.reset();
        crashReporter.reset();
        machine.endProcess();
        surfaces = NotedSurfaces();
        crashReporter = std::make_unique<CrashReporter>(machine.platform());
        engine = std::make_unique<MonitorEngine>(machine.platform());
        flow = std::make_unique<LaunchFlow>(machine.platform(),
            LaunchFlow::Parts{.application = application,
                .surfaces = surfaces,
                .engine = *engine,
                .crashReporter = *crashReporter});
    }

    void haveLaunchedBefore(const std::string& version = "1.2.0")
    {
        machine.userDefaults.setBool("hasLaunchedBefore", true);
        machine.userDefaults.setString("lastLaunchedVersion", version);
    }

    /// What the launch prints.
    std::string launch()
    {
        testing::internal::CaptureStdout();
        flow->applicationDidFinishLaunching();
        return testing::internal::GetCapturedStdout();
    }

    bool isRecording() const { return fs::exists(directory.path() / "monitor.db"); }

    std::string crashLog() const
    {
        std::ifstream stream(directory.path() / "crash-20260101.log");
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string lastVersion() const
    {
        return machine.userDefaults.stringForKey("lastLaunchedVersion");
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kLaunch};
    VirtualApplication application{};
    NotedSurfaces surfaces{};
    std::unique_ptr<CrashReporter> crashReporter{};
    std::unique_ptr<MonitorEngine> engine{};
    std::unique_ptr<LaunchFlow> flow{};
};

TEST_F(LaunchFlowTest, TheFirstLaunchShowsTheSetUpAndRecordsNothing)
{
    launch();
    EXPECT_THAT(surfaces.notes, ElementsAre("set-up"));
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(lastVersion(), "1.2.0");
    EXPECT_FALSE(machine.userDefaults.boolForKey("hasLaunchedBefore"));
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
    EXPECT_EQ(application.activationCount(), 1);
    machine.runFor(10);
    EXPECT_THAT(surfaces.notes, ElementsAre("set-up", "about item"));
}

TEST_F(LaunchFlowTest, GoingOnClosesTheSetUpAndBeginsToRecord)
{
    launch();
    machine.runFor(1);
    surfaces.notes.clear();
    surfaces.goOn();
    EXPECT_THAT(surfaces.notes, IsEmpty()); // not before what runs now is done
    machine.runFor(0);
    EXPECT_THAT(surfaces.notes, ElementsAre("close set-up"));
    EXPECT_TRUE(isRecording());
    machine.runFor(1.2);
    EXPECT_THAT(surfaces.notes, ElementsAre("close set-up", "dashboard"));
}

TEST_F(LaunchFlowTest, ASetUpThatWasAbandonedShowsAgain)
{
    launch();
    flow->applicationWillTerminate();
    launchAgain();
    launch();
    EXPECT_THAT(surfaces.notes, ElementsAre("set-up"));
}

TEST_F(LaunchFlowTest, TheNormalLaunchRecordsAtOnceAndOpensTheDashboardLater)
{
    haveLaunchedBefore();
    launch();
    EXPECT_THAT(surfaces.notes, IsEmpty());
    EXPECT_TRUE(isRecording());
    EXPECT_FALSE(application.activationPolicy());
    machine.mainLoop.runBefore(kLaunch + 1.2);
    EXPECT_THAT(surfaces.notes, ElementsAre("about item"));
    machine.runFor(0);
    EXPECT_THAT(surfaces.notes, ElementsAre("about item", "dashboard"));
}

TEST_F(LaunchFlowTest, AFirstNormalLaunchWithoutAStoredVersionIsNoNewVersion)
{
    haveLaunchedBefore("");
    launch();
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(lastVersion(), "1.2.0");
}

TEST_F(LaunchFlowTest, AnUpdateShowsTheSetUpOnceEvenWithThePermission)
{
    haveLaunchedBefore("1.1.9");
    launch();
    EXPECT_THAT(surfaces.notes, ElementsAre("set-up after an update"));
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(lastVersion(), "1.2.0");

    launchAgain();
    launch();
    EXPECT_THAT(surfaces.notes, IsEmpty());
    EXPECT_TRUE(isRecording());
}

TEST_F(LaunchFlowTest, ARevokedPermissionShowsTheSetUpWithoutAnUpdate)
{
    haveLaunchedBefore();
    machine.accessibility.setTrusted(false);
    launch();
    EXPECT_THAT(surfaces.notes, ElementsAre("set-up"));
}

TEST_F(LaunchFlowTest, APackageWithoutAVersionIsVersionZero)
{
    machine.bundleValues.remove("CFBundleShortVersionString");
    haveLaunchedBefore("1.0");
    launch();
    EXPECT_THAT(surfaces.notes, ElementsAre("set-up after an update"));
    EXPECT_EQ(lastVersion(), "0.0.0");
}

TEST_F(LaunchFlowTest, ALoginItemThatWasSwitchedOffIsOnAgain)
{
    haveLaunchedBefore();
    machine.loginItem.setEnabled(false);
    EXPECT_THAT(launch(), HasSubstr("✅ 已注册开机自启（SMAppService）\n["));
    EXPECT_TRUE(machine.loginItem.isEnabled());
    EXPECT_TRUE(machine.userDefaults.boolForKey("loginItemRegistered"));
}

TEST_F(LaunchFlowTest, ALoginItemThatIsOnIsLeftAlone)
{
    haveLaunchedBefore();
    EXPECT_THAT(launch(), testing::Not(HasSubstr("开机自启")));
    EXPECT_FALSE(machine.userDefaults.all().contains("loginItemRegistered"));
}

TEST_F(LaunchFlowTest, ARefusedLoginItemStopsNothing)
{
    haveLaunchedBefore();
    machine.loginItem.setEnabled(false);
    machine.loginItem.refuse(LoginItemFailure{"not allowed"});
    EXPECT_THAT(launch(), HasSubstr("⚠️ 开机自启注册失败: not allowed\n["));
    EXPECT_FALSE(machine.userDefaults.all().contains("loginItemRegistered"));
    EXPECT_TRUE(isRecording());
}

TEST_F(LaunchFlowTest, TheCrashLogIsOpenBeforeTheEngineStarts)
{
    haveLaunchedBefore();
    const std::string output = launch();
    EXPECT_THAT(crashLog(), HasSubstr("=== Quillbrook 启动"));
    std::ifstream stream(directory.path() / "monitor.log");
    const std::string log(std::istreambuf_iterator<char>(stream), {});
    EXPECT_THAT(log, testing::Not(HasSubstr("检测到上次异常退出"))); // there was no log yet
    EXPECT_THAT(output, HasSubstr("✅ 就绪\n"));
}

TEST_F(LaunchFlowTest, AMountedVolumeIsWarnedOfOnceBehindTheLaunch)
{
    haveLaunchedBefore();
    machine.bundleValues.setBundlePath("/Volumes/Quillbrook/Quillbrook.app");
    launch();
    EXPECT_THAT(application.alerts(), IsEmpty());
    EXPECT_TRUE(isRecording());
    machine.runFor(10);
    ASSERT_EQ(application.alerts().size(), 1U);
    const Alert& alert = application.alerts().front();
    EXPECT_EQ(alert.message, "请将 Quillbrook 复制到 Applications");
    EXPECT_EQ(alert.informativeText,
        "检测到您正从 DMG 直接运行 Quillbrook。\n\n"
        "macOS 可能会在几分钟后卸载 DMG，导致应用崩溃（SIGBUS）。\n\n"
        "请将 Quillbrook.app 拖入 Applications 文件夹后再打开。");
    EXPECT_EQ(alert.firstButton, "打开 Applications 文件夹");
    EXPECT_EQ(alert.secondButton, "知道了");
    EXPECT_EQ(application.directoryOpeningCount(), 0);
}

TEST_F(LaunchFlowTest, TheFirstAnswerOpensTheFolder)
{
    application.setAnswer(AlertAnswer::firstButton);
    machine.bundleValues.setBundlePath("/Volumes/Quillbrook/Quillbrook.app");
    launch();
    machine.runFor(0);
    EXPECT_EQ(application.directoryOpeningCount(), 1);
}

TEST_F(LaunchFlowTest, APathThatHoldsVolumesFurtherOnIsNotWarnedOf)
{
    machine.bundleValues.setBundlePath("/home/me/Volumes/Quillbrook.app");
    launch();
    machine.runFor(10);
    EXPECT_THAT(application.alerts(), IsEmpty());
}

TEST_F(LaunchFlowTest, AReopenShowsTheDashboardUnlessAWindowIsThere)
{
    EXPECT_TRUE(flow->applicationShouldHandleReopen(true));
    EXPECT_THAT(surfaces.notes, IsEmpty());
    EXPECT_TRUE(flow->applicationShouldHandleReopen(false));
    EXPECT_THAT(surfaces.notes, ElementsAre("dashboard"));
}

TEST_F(LaunchFlowTest, TerminatingFinishesTheRowsAndThenNotesTheCleanExit)
{
    haveLaunchedBefore();
    machine.bringToFront("Editor", "org.example.Editor");
    launch();
    machine.runFor(59);
    machine.humanInput.happenNow();
    machine.runFor(11);
    flow->applicationWillTerminate();
    flow->applicationWillTerminate();
    EXPECT_THAT(StoreReader(directory.path() / "monitor.db")
                    .rows("SELECT app_name, duration_sec FROM app_sessions"),
        ElementsAre("Editor|10.0"));
    EXPECT_THAT(
        crashLog(), EndsWith("=== Quillbrook 正常退出 2026-01-01T08:01:10.000+08:00 ===\n"));
    EXPECT_FALSE(fs::exists(directory.path() / "clean_exit"));
}

} // namespace
} // namespace quillbrook
