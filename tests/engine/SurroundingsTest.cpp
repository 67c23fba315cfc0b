#include "support/EngineFixture.h"

#include <algorithm>
#include <thread>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Bad surroundings: files and stores that are not what they should be.
class SurroundingsTest : public EngineFixture {};

TEST_F(SurroundingsTest, AFileThatIsNoDatabaseIsLeftAsItIs)
{
    const std::string content(8192, 'x');
    std::ofstream(file("monitor.db")) << content;
    startWorkingIn("Editor");
    EXPECT_THAT(logText(), HasSubstr("⚠️ SQL 错误: file is not a database — "));
    EXPECT_THAT(logText(), HasSubstr("✅ 就绪"));
    stop();
    EXPECT_EQ(textOf("monitor.db"), content);
}

TEST_F(SurroundingsTest, ADataDirectoryThatCantBeMadeLeavesTheProgramWithoutACollector)
{
    std::ofstream(file("blocked")) << "a file";
    VirtualMachine other(file("blocked") / "data", kStart);
    MonitorEngine lost(other.platform());
    testing::internal::CaptureStdout();
    lost.start();
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
        EndsWith("❌ 无法打开数据库: unable to open database file\n"
                 "[2026-01-01T00:00:00Z] ❌ 无法打开数据库，监控引擎启动失败\n"));
    other.runFor(600);
    lost.stop();
}

TEST_F(SurroundingsTest, AStoreLockedForAWhileIsWaitedFor)
{
    start();
    std::thread writer([this, locked = store().value("SELECT 1")] {
        const StoreReader other(file("monitor.db"));
        other.exec("BEGIN IMMEDIATE");
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        other.exec("COMMIT");
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    machine.runFor(59);
    machine.bringToFront("Editor", "org.example.Editor");
    machine.humanInput.happenNow();
    machine.runFor(1);
    writer.join();
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    EXPECT_THAT(logText(), Not(HasSubstr("⚠️")));
}

TEST_F(SurroundingsTest, AFailedInsertLeavesTheRowBeforeAlone)
{
    startWorkingIn("Editor");
    store().exec("CREATE TRIGGER no_mail BEFORE INSERT ON app_sessions "
                 "WHEN NEW.app_name = 'Mail' BEGIN SELECT RAISE(ABORT, 'no mail'); END");
    bringToFront("Mail");
    machine.runFor(3);
    EXPECT_THAT(
        logText(), HasSubstr("⚠️ SQL 错误: no mail —     INSERT INTO app_sessions "));
    bringToFront("Music");
    machine.runFor(3);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Music|66|NULL|0"));
}

} // namespace
} // namespace quillbrook
