#include "support/EngineFixture.h"

#include <sys/stat.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class MonitorEngineTest : public EngineFixture {};

TEST_F(MonitorEngineTest, StartMakesItsFilesAndTellsWhenItIsReady)
{
    start();
    EXPECT_EQ(logText(),
        "[2026-01-01T00:00:00Z] 🚀 引擎启动\n"
        "[2026-01-01T00:00:00Z] ⌨️ 已授权，启动键盘监控...\n"
        "[2026-01-01T00:00:00Z] ✅ 就绪\n");
    EXPECT_EQ(textOf("monitor.pid"), "4242");
    EXPECT_TRUE(std::filesystem::exists(file("monitor.db")));
}

TEST_F(MonitorEngineTest, TheDataDirectoryIsItsOwnersAlone)
{
    VirtualMachine other(directory.path() / "deep" / "data", kStart);
    MonitorEngine(other.platform()).start();
    struct stat status {};
    ASSERT_EQ(stat((directory.path() / "deep/data").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(MonitorEngineTest, ASecondStartReturnsAtOnce)
{
    start();
    machine.workspace.setInstances(2);
    start();
    EXPECT_THAT(logText(), EndsWith("✅ 就绪\n"));
    startWorkingIn("Editor");
    machine.runFor(60);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
}

TEST_F(MonitorEngineTest, StopWithoutStartDoesNothing)
{
    engine = std::make_unique<MonitorEngine>(machine.platform());
    stop();
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(MonitorEngineTest, StopFinishesTheOpenSession)
{
    startWorkingIn("Editor");
    machine.runFor(30.5);
    stop();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|90|1"));
    EXPECT_EQ(store().value("SELECT duration_sec FROM app_sessions"), "30.5");
    EXPECT_THAT(idlePeriods(), IsEmpty());
}

TEST_F(MonitorEngineTest, StopEndsAllOpenIdlePeriodsAsProcessExit)
{
    startWorkingIn("Editor");
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    machine.runFor(10);
    store().exec("INSERT INTO idle_periods (started_at, source_type) VALUES (1767225600, 2)");
    stop();
    EXPECT_THAT(idlePeriods(), ElementsAre("61|70|4", "0|70|4"));
}

TEST_F(MonitorEngineTest, StopRemovesThePidFileAndSaysSoOnStandardOutputOnly)
{
    start();
    testing::internal::CaptureStdout();
    engine->stop();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[2026-01-01T00:00:00Z] 🛑 监控引擎停止中...\n"
        "[2026-01-01T00:00:00Z] ✅ 监控引擎已停止\n");
    EXPECT_THAT(logText(), EndsWith("🛑 监控引擎停止中...\n"));
    EXPECT_FALSE(std::filesystem::exists(file("monitor.pid")));
}

TEST_F(MonitorEngineTest, StopLeavesNoWriteAheadLogBehind)
{
    startWorkingIn("Editor");
    EXPECT_TRUE(std::filesystem::exists(file("monitor.db-wal")));
    engine->stop();
    EXPECT_FALSE(std::filesystem::exists(file("monitor.db-wal")));
}

TEST_F(MonitorEngineTest, AfterStopTicksWriteNothing)
{
    startWorkingIn("Editor");
    engine->stop();
    bringToFront("Mail");
    machine.runFor(10);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
}

TEST_F(MonitorEngineTest, AnEngineThatIsGoneIsNotCalled)
{
    startWorkingIn("Editor");
    engine.reset(); // its timers and observers stay behind
    bringToFront("Mail");
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    machine.workspace.notify(WorkspaceNotification::didWake);
    machine.runFor(600);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(MonitorEngineTest, ASecondInstanceStaysOffAndTouchesNoFile)
{
    machine.workspace.setInstances(3);
    testing::internal::CaptureStdout();
    start();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[2026-01-01T00:00:00Z] ⚠️ Quillbrook 已有 3 个实例在运行\n"
        "[2026-01-01T00:00:00Z] ⚠️ MonitorEngine 已在运行中，退出启动\n");
    machine.runFor(600);
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(MonitorEngineTest, AStartThatWasRefusedCanBeRepeated)
{
    machine.workspace.setInstances(2);
    start();
    engine->stop();
    machine.workspace.setInstances(1);
    startWorkingIn("Editor");
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
}

TEST_F(MonitorEngineTest, WithoutADatabaseNothingIsStarted)
{
    std::filesystem::create_directory(file("monitor.db"));
    startWorkingIn("Editor");
    EXPECT_EQ(logText(),
        "[2026-01-01T00:00:00Z] 🚀 引擎启动\n"
        "[2026-01-01T00:00:00Z] ❌ 无法打开数据库: unable to open database file\n"
        "[2026-01-01T00:00:00Z] ❌ 无法打开数据库，监控引擎启动失败\n");
    engine->stop(); // does nothing, so that the pid file stays
    EXPECT_EQ(textOf("monitor.pid"), "4242");
    EXPECT_THAT(logText(), Not(HasSubstr("🛑")));
}

TEST_F(MonitorEngineTest, WithoutALogFileLinesGoToStandardOutput)
{
    std::filesystem::create_directory(file("monitor.log"));
    testing::internal::CaptureStdout();
    start();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[2026-01-01T00:00:00Z] 🚀 引擎启动\n"
        "[2026-01-01T00:00:00Z] ⌨️ 已授权，启动键盘监控...\n"
        "[2026-01-01T00:00:00Z] ✅ 就绪\n");
}

TEST_F(MonitorEngineTest, AFolderInThePidFilesPlaceIsNoHindrance)
{
    std::filesystem::create_directories(file("monitor.pid") / "inside");
    startWorkingIn("Editor");
    stop();
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    EXPECT_FALSE(std::filesystem::exists(file("monitor.pid.new")));
}

TEST_F(MonitorEngineTest, TimersRunOneIntervalAfterStartAndChecksBehindTicks)
{
    // Front comes at 59 s; at 60 s the check recovers it, and the tick of that second, which
    // was made earlier, has nothing to do yet.
    startWorkingIn("Editor");
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(MonitorEngineTest, TheLogGoesOnAtTheNextStart)
{
    start();
    stop();
    start();
    EXPECT_THAT(logText(), StartsWith("[2026-01-01T00:00:00Z] 🚀 引擎启动\n"));
    EXPECT_THAT(logText(),
        EndsWith("🚀 引擎启动\n"
                 "[2026-01-01T00:00:00Z] ⌨️ 已授权，启动键盘监控...\n"
                 "[2026-01-01T00:00:00Z] ✅ 就绪\n"));
}

} // namespace
} // namespace quillbrook
