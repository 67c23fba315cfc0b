#include "support/EngineFixture.h"

#include <fcntl.h>
#include <sys/fsuid.h>
#include <unistd.h>

#include <algorithm>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// A store that somebody removes, replaces, damages or locks away while the engine records.
class LostStoreTest : public EngineFixture {
protected:
    static constexpr off_t kPage = 4096;

    /// Works in two applications, so that the store has a finished and an open session.
    void workInTwo()
    {
        startWorkingIn("Editor");
        switchTo("Mail");
        ASSERT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    }

    void switchTo(const std::string& name)
    {
        bringToFront(name);
        machine.runFor(3);
    }

    /// Many more rows than the first pages hold, all in the store itself and none in its log.
    void fillStore() const
    {
        store().exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n "
                     "WHERE i < 20000) INSERT INTO alerts (timestamp, alert_type, severity, "
                     "message) SELECT 1000000 + i, 'high_load', 'warning', 'a message ' || i "
                     "FROM n; PRAGMA wal_checkpoint(TRUNCATE)");
    }

    void overwrite(off_t at, std::size_t count) const
    {
        const int descriptor = open(file("monitor.db").c_str(), O_WRONLY | O_CLOEXEC);
        const std::string garbage(count, '\x55');
        ASSERT_EQ(pwrite(descriptor, garbage.data(), count, at), static_cast<ssize_t>(count));
        close(descriptor);
    }

    /// The stores that were kept beside, by name.
    std::vector<std::string> keptStores() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(directory.path())) {
            const std::string name = entry.path().filename();
            if (name.starts_with("monitor-damaged-") && name.ends_with(".db")) {
                names.push_back(name);
            }
        }
        std::ranges::sort(names);
        return names;
    }

    std::vector<std::string> sessionsKeptIn(const std::string& name) const
    {
        return StoreReader(file(name)).rows("SELECT app_name FROM app_sessions ORDER BY id");
    }

    void expectSound() const
    {
        EXPECT_EQ(store().value("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_categories"), "113");
    }

    void expectToldOnce(const std::string& what) const
    {
        EXPECT_THAT(notifications(),
            ElementsAre(
                "display notification \"" + what + "\" with title \"Quillbrook 数据库异常\""));
        EXPECT_EQ(countInLog("⚠️ " + what), 1U);
        EXPECT_THAT(logText(), Not(HasSubstr("SQL")));
    }
};

TEST_F(LostStoreTest, ADeletedStoreIsMadeAnewWithWhatIsUnderWay)
{
    workInTwo();
    for (const char* suffix : {"", "-wal", "-shm"}) {
        fs::remove(file("monitor.db" + std::string(suffix)));
    }
    machine.runFor(57); // nothing is written meanwhile
    switchTo("Music");
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|123|0", "Music|123|NULL|0"));
    expectSound();
    expectToldOnce("数据库文件被删除或移走，已新建数据库继续记录");
    EXPECT_THAT(keptStores(), IsEmpty());
    stop();
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|123|0", "Music|123|123|0"));
}

TEST_F(LostStoreTest, TheLogOfADeletedStoreDoesNotGetIntoTheNewOne)
{
    workInTwo();
    fs::remove(file("monitor.db"));
    switchTo("Music");
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    expectSound();
}

TEST_F(LostStoreTest, AStoreThatWasMovedAwayIsWhole)
{
    workInTwo();
    fs::rename(file("monitor.db"), file("elsewhere.db"));
    switchTo("Music");
    EXPECT_THAT(sessionsKeptIn("elsewhere.db"), ElementsAre("Editor", "Mail"));
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
}

TEST_F(LostStoreTest, APeriodOfIdlenessIsCarriedOver)
{
    workInTwo();
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    machine.runFor(1);
    fs::remove(file("monitor.db"));
    machine.workspace.notify(WorkspaceNotification::screensDidWake);
    machine.runFor(10);
    EXPECT_THAT(idlePeriods(), ElementsAre("64|65|3"));
    EXPECT_THAT(sessions(), ElementsAre("Mail|65|NULL|3"));
}

TEST_F(LostStoreTest, ADataDirectoryThatVanishesIsMadeAnewForItsOwnerAlone)
{
    workInTwo();
    fs::remove_all(directory.path());
    switchTo("Music");
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    EXPECT_EQ(fs::status(directory.path()).permissions(), fs::perms::owner_all);
}

TEST_F(LostStoreTest, AnEarlierStorePutBackIsGoneOnWith)
{
    workInTwo();
    store().exec("VACUUM INTO '" + file("backup.db").string() + "'");
    switchTo("Music");
    fs::rename(file("backup.db"), file("monitor.db"));
    switchTo("Film");
    // The backup's open session ends where the next one begins.
    EXPECT_THAT(sessions(),
        ElementsAre("Editor|60|63|1", "Mail|63|NULL|0", "Music|66|69|0", "Film|69|NULL|0"));
    expectSound();
    expectToldOnce("数据库文件被替换，已改用现在的文件继续记录");
}

TEST_F(LostStoreTest, AFileThatIsNoStorePutInItsPlaceIsKeptBeside)
{
    workInTwo();
    const std::string text(10000, 'x');
    std::ofstream(file("other")) << text;
    fs::rename(file("other"), file("monitor.db"));
    switchTo("Music");
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    ASSERT_THAT(keptStores(), ElementsAre("monitor-damaged-20260101-080106.db"));
    EXPECT_EQ(textOf(keptStores()[0]), text);
    expectSound();
}

TEST_F(LostStoreTest, ATruncatedStoreIsKeptBeside)
{
    for (const off_t size : {off_t{0}, 5 * kPage}) {
        SCOPED_TRACE(size);
        startWorkingIn("Editor");
        fillStore();
        machine.runFor(120);
        bringToFront("Mail");
        machine.runFor(3);
        fs::resize_file(file("monitor.db"), static_cast<std::uintmax_t>(size));
        const auto before = keptStores().size();
        switchTo("Music");
        EXPECT_THAT(keptStores(), SizeIs(before + 1));
        EXPECT_THAT(sessionNames(), ElementsAre("Mail", "Music"));
        expectSound();
        crash();
        fs::remove(file("monitor.db"));
        machine.bringToFront("Editor", "org.example.Editor");
    }
}

TEST_F(LostStoreTest, AStoreDamagedInTheMiddleIsKeptBeside)
{
    startWorkingIn("Editor");
    fillStore();
    switchTo("Mail");
    overwrite(40 * kPage, 3 * kPage);
    switchTo("Music");
    EXPECT_THAT(keptStores(), ElementsAre("monitor-damaged-20260101-080106.db"));
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    expectSound();
    expectToldOnce("数据库文件已损坏，保留为 monitor-damaged-20260101-080106.db，"
                   "已新建数据库继续记录");
    // What can still be read is there, the log's part included.
    EXPECT_THAT(
        sessionsKeptIn("monitor-damaged-20260101-080106.db"), ElementsAre("Editor", "Mail"));
}

TEST_F(LostStoreTest, AStoreWhoseFirstPageIsOverwrittenIsKeptBeside)
{
    workInTwo();
    store().exec("PRAGMA wal_checkpoint(TRUNCATE)");
    overwrite(0, kPage);
    switchTo("Music");
    EXPECT_THAT(keptStores(), SizeIs(1));
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    expectSound();
}

TEST_F(LostStoreTest, AKeptStoreIsNeverOverwritten)
{
    std::ofstream(file("monitor-damaged-20260101-080106.db")) << "earlier";
    std::ofstream(file("monitor-damaged-20260101-080106-2.db-wal")) << "earlier log";
    workInTwo();
    fs::resize_file(file("monitor.db"), 0);
    switchTo("Music");
    EXPECT_EQ(textOf("monitor-damaged-20260101-080106.db"), "earlier");
    EXPECT_EQ(textOf("monitor-damaged-20260101-080106-2.db-wal"), "earlier log");
    EXPECT_TRUE(fs::exists(file("monitor-damaged-20260101-080106-3.db")));
}

TEST_F(LostStoreTest, DamageThatAStatementMeetsCostsNoRow)
{
    startWorkingIn("Editor");
    fillStore();
    stop();
    // Found damaged already by the engine that opens it: the start goes over all sessions.
    const std::string root
        = store().value("SELECT rootpage FROM sqlite_master WHERE name = 'app_sessions'");
    store().exec("PRAGMA wal_checkpoint(TRUNCATE)");
    overwrite((std::stol(root) - 1) * kPage, kPage);
    startWorkingIn("Editor");
    EXPECT_THAT(
        logText(), HasSubstr("⚠️ SQL 错误: database disk image is malformed — UPDATE"));
    EXPECT_THAT(keptStores(), SizeIs(1));
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    EXPECT_THAT(notifications(), SizeIs(1));
    expectSound();
}

TEST_F(LostStoreTest, ALogThatIsRemovedCostsNothing)
{
    for (const char* lost : {"monitor.db-wal", "monitor.db-shm"}) {
        SCOPED_TRACE(lost);
        workInTwo();
        fs::remove(file(lost));
        switchTo("Music");
        EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|66|0", "Music|66|NULL|0"));
        expectSound();
        EXPECT_EQ(
            countInLog(
                "⚠️ 数据库的日志文件丢失，内容已写回数据库，继续记录"),
            1U);
        EXPECT_THAT(notifications(), IsEmpty());
        crash();
        EXPECT_THAT(sessionNames(), ElementsAre("Editor", "Mail", "Music"));
        for (const auto& entry : fs::directory_iterator(directory.path())) {
            fs::remove(entry);
        }
        machine.clock.set(kStart);
    }
}

TEST_F(LostStoreTest, ATruncatedLogIsKeptBesideWithItsStore)
{
    workInTwo();
    fs::resize_file(file("monitor.db-wal"), 0);
    switchTo("Music");
    EXPECT_THAT(keptStores(), SizeIs(1));
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    expectSound();
}

TEST_F(LostStoreTest, AStoreThatAnotherProgramWroteToIsKeptOn)
{
    workInTwo();
    fillStore();
    store().exec("DELETE FROM alerts; VACUUM; PRAGMA wal_checkpoint(TRUNCATE)");
    switchTo("Music");
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|66|0", "Music|66|NULL|0"));
    EXPECT_THAT(keptStores(), IsEmpty());
    EXPECT_THAT(logText(), Not(HasSubstr("⚠️")));
    expectSound();
}

TEST_F(LostStoreTest, NothingIsWrittenToAStoreThatIsLookedThrough)
{
    workInTwo();
    fillStore();
    bringToFront("Music");
    machine.runFor(2);
    machine.keyCounting.press(5);
    std::vector<std::string> meanwhile;
    machine.mainLoop.runAfter(1, [&] { meanwhile = sessions(); });
    machine.runFor(1);
    EXPECT_THAT(meanwhile, ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|66|0", "Music|66|NULL|0"));
    EXPECT_THAT(logText(), Not(HasSubstr("数据库")));
    EXPECT_THAT(logText(), Not(HasSubstr("SQL")));
}

TEST_F(LostStoreTest, KeysOfAMinuteOutliveTheLookThroughAStore)
{
    workInTwo();
    machine.runFor(56);
    fillStore();
    machine.keyCounting.press(5);
    machine.runFor(1);
    EXPECT_THAT(store().rows("SELECT keystroke_count FROM keystrokes"), ElementsAre("5"));
}

TEST_F(LostStoreTest, TheEndWaitsForTheLookThroughAStore)
{
    for (const bool isDamaged : {false, true}) {
        SCOPED_TRACE(isDamaged);
        workInTwo();
        fillStore();
        if (isDamaged) {
            overwrite(40 * kPage, 3 * kPage);
        }
        bringToFront("Music");
        machine.runFor(2);
        machine.mainLoop.runAfter(1, [this] { engine->stop(); });
        machine.runFor(1);
        crash();
        EXPECT_THAT(keptStores(), SizeIs(isDamaged ? 1 : 0));
        std::vector<std::string> expected{"Editor|60|63|1", "Mail|63|66|0", "Music|66|66|0"};
        if (isDamaged) {
            expected.erase(expected.begin());
        }
        EXPECT_EQ(sessions(), expected);
        fs::remove(file("monitor.db"));
        machine.clock.set(kStart);
    }
}

TEST_F(LostStoreTest, AStoreThatGoesWhileItIsLookedThroughIsMadeAnew)
{
    workInTwo();
    fillStore();
    bringToFront("Music");
    machine.runFor(2);
    machine.mainLoop.runAfter(1, [this] { fs::remove(file("monitor.db")); });
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Mail|63|66|0", "Music|66|NULL|0"));
    expectSound();
}

TEST_F(LostStoreTest, AReadOnlyStoreIsWrittenOnceItCanBe)
{
    start();
    stop();
    fs::permissions(file("monitor.db"), fs::perms::owner_read);
    if (getuid() == 0) {
        chown(directory.path().c_str(), 65534, 65534);
        for (const auto& entry : fs::directory_iterator(directory.path())) {
            chown(entry.path().c_str(), 65534, 65534);
        }
        setfsuid(65534); // whom permissions hold back
    }
    startWorkingIn("Editor");
    switchTo("Mail");
    machine.runFor(60);
    EXPECT_EQ(countInLog("⚠️ 数据库无法写入（attempt to write a readonly database），"
                         "新记录暂存在内存中，恢复后自动补写"),
        1U);
    EXPECT_THAT(notifications(), SizeIs(1));
    fs::permissions(file("monitor.db"), fs::perms::owner_read | fs::perms::owner_write);
    machine.runFor(1);
    setfsuid(getuid());
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    EXPECT_EQ(countInLog("🔄 数据库恢复写入"), 1U);
    EXPECT_THAT(notifications(), SizeIs(1));
}

TEST_F(LostStoreTest, AFileThatWasNoStoreFromTheStartIsNobodysToMove)
{
    const std::string text(10000, 'x');
    std::ofstream(file("monitor.db")) << text;
    startWorkingIn("Editor");
    switchTo("Mail");
    machine.runFor(120);
    EXPECT_EQ(textOf("monitor.db"), text);
    EXPECT_THAT(
        notifications(), ElementsAre(HasSubstr("数据库无法写入（file is not a database）")));
    // When the person has put it away, all that was recorded is written.
    fs::remove(file("monitor.db"));
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    expectSound();
}

} // namespace
} // namespace quillbrook
