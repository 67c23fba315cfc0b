#include "support/EngineFixture.h"

#include <chrono>
#include <functional>
#include <optional>
#include <random>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using enum WorkspaceNotification;

/// A store that another program writes to for longer than anybody waits.
class BusyStoreTest : public EngineFixture {
protected:
    void hold()
    {
        holder.emplace(file("monitor.db"));
        holder->exec("BEGIN IMMEDIATE");
    }
    void letGo() { holder.reset(); }

    static double secondsOf(const std::function<void()>& work)
    {
        const auto before = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
    }

    /// All that the engine recorded, every column.
    std::vector<std::string> allRows() const
    {
        std::vector<std::string> all;
        for (const char* table : {"app_sessions", "idle_periods", "alerts", "boot_events"}) {
            const auto rows = store().rows("SELECT * FROM " + std::string(table) + " ORDER BY id");
            all.insert(all.end(), rows.begin(), rows.end());
        }
        return all;
    }

    std::optional<StoreReader> holder{};
};

TEST_F(BusyStoreTest, ATransactionWaitsOnceAndIsWrittenWithItsTimesWhenTheStoreIsFree)
{
    startWorkingIn("Editor");
    hold();
    machine.workspace.notify(screensDidSleep);
    const double waited = secondsOf([this] { machine.runFor(1); });
    EXPECT_GT(waited, 4.5);
    EXPECT_LT(waited, 8);
    EXPECT_THAT(logText(),
        HasSubstr(
            "⚠️ SQL 错误: database is locked —     UPDATE app_sessions SET ended_at"));
    EXPECT_THAT(logText(),
        HasSubstr("⚠️ SQL 错误: database is locked —     INSERT INTO idle_periods"));
    EXPECT_THAT(logText(), EndsWith("💤 Editor（1s）→ 空闲\n"));
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));

    // Seventeen switches later nobody has waited again, and nothing is lost.
    EXPECT_LT(secondsOf([this] {
        machine.workspace.notify(screensDidWake);
        for (int i = 0; i < 17; ++i) {
            bringToFront("App" + std::to_string(i));
            machine.runFor(3);
        }
    }),
        2);
    letGo();
    machine.runFor(1);
    EXPECT_THAT(idlePeriods(), ElementsAre("61|62|3"));
    const auto rows = sessions();
    ASSERT_EQ(rows.size(), 18U);
    EXPECT_EQ(rows[0], "Editor|60|61|1");
    EXPECT_EQ(rows[1], "App0|62|67|3");
    EXPECT_EQ(rows[2], "App1|67|70|0");
    EXPECT_EQ(rows[17], "App16|112|NULL|0");
    EXPECT_EQ(countInLog("🔄 数据库恢复写入，已补写 18 项记录"), 1U);
    EXPECT_EQ(countInLog("⚠️ SQL 错误"), 36U); // each statement once, at its moment
}

TEST_F(BusyStoreTest, TheNextTransactionWaitsForOthersAgain)
{
    startWorkingIn("Editor");
    hold();
    bringToFront("Mail");
    machine.runFor(3);
    letGo();
    machine.runFor(1);
    hold();
    bringToFront("Music");
    EXPECT_GT(secondsOf([this] { machine.runFor(3); }), 4.5);
    letGo();
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|67|0", "Music|67|NULL|0"));
}

TEST_F(BusyStoreTest, KeysOfAMinuteInWhichTheStoreIsHeldAreLost)
{
    startWorkingIn("Editor");
    hold();
    bringToFront("Mail");
    machine.runFor(3);
    machine.keyCounting.press(7);
    EXPECT_LT(secondsOf([this] { machine.runFor(60); }), 2);
    letGo();
    machine.keyCounting.press(5);
    machine.runFor(60);
    EXPECT_THAT(store().rows("SELECT keystroke_count FROM keystrokes"), ElementsAre("5"));
    EXPECT_EQ(countInLog("⚠️ 插入击键数据失败: database is locked"), 1U);
}

TEST_F(BusyStoreTest, AStoreThatIsHeldAtTheStartIsMadeReadyLater)
{
    start();
    stop();
    hold();
    EXPECT_LT(secondsOf([this] { startWorkingIn("Editor"); }), 8);
    EXPECT_EQ(countInLog("database is locked —     INSERT INTO app_sessions"), 1U);
    EXPECT_THAT(sessions(), IsEmpty());
    letGo();
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(BusyStoreTest, AStoreHeldForMinutesIsToldOnce)
{
    startWorkingIn("Editor");
    hold();
    bringToFront("Mail");
    machine.runFor(3 + 59);
    EXPECT_THAT(notifications(), IsEmpty());
    machine.runFor(300);
    EXPECT_THAT(notifications(),
        ElementsAre(HasSubstr("display notification \"数据库无法写入（database is "
                              "locked），新记录暂存在内存中，恢复后自动补写\" with title "
                              "\"Quillbrook 数据库异常\"")));
    EXPECT_EQ(countInLog("数据库无法写入"), 1U);
    letGo();
}

TEST_F(BusyStoreTest, AnEndIsWrittenWithWhatIsDue)
{
    startWorkingIn("Editor");
    hold();
    bringToFront("Mail");
    machine.runFor(3);
    letGo();
    stop();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|63|0"));
}

TEST_F(BusyStoreTest, AnEndWhileTheStoreIsHeldTellsWhatIsLost)
{
    startWorkingIn("Editor");
    hold();
    testing::internal::CaptureStdout();
    EXPECT_LT(secondsOf([this] { stop(); }), 8); // it waits once, for all that it writes
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
        HasSubstr("⚠️ 数据库仍无法写入，2 项记录未能保存\n"));
    letGo();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(BusyStoreTest, ASleepThatEndsTheSessionStaysAStartupBehindALock)
{
    startWorkingIn("Editor");
    hold();
    machine.workspace.notify(willSleep);
    machine.clock.set(kStart + 5000);
    machine.workspace.notify(didWake);
    machine.runFor(1);
    letGo();
    machine.runFor(1);
    EXPECT_THAT(idlePeriods(), ElementsAre("60|5000|2"));
    EXPECT_EQ(sessions().at(0), "Editor|60|60|1");
    EXPECT_THAT(sessions().at(1), EndsWith("|NULL|5"));
}

/// One day's life, always the same for a seed; `held` tells when another program writes.
class HeldDayTest : public BusyStoreTest {
protected:
    void live(unsigned seed, double heldFrom, double heldUntil)
    {
        std::mt19937 random(seed);
        startWorkingIn("Editor");
        for (int i = 0; i < 400; ++i) {
            const double at = machine.clock.now() - kStart;
            if (at >= heldUntil) {
                letGo();
            } else if (at >= heldFrom && !holder) {
                hold();
            }
            switch (random() % 8) {
            case 0:
                machine.workspace.notify(random() % 2 == 0 ? screensDidSleep : screensDidWake);
                break;
            case 1:
                machine.workspace.notify(random() % 2 == 0 ? willSleep : didWake);
                break;
            case 2:
                machine.kernelFigures.setSwap(SwapFigures{.totalBytes = 100, .usedBytes = 95});
                break;
            case 3:
                machine.humanInput.happenNow();
                break;
            default:
                bringToFront("App" + std::to_string(random() % 9));
                break;
            }
            machine.runFor(static_cast<double>(1 + random() % 40));
        }
        letGo();
        machine.runFor(2);
        stop();
    }
};

TEST_F(HeldDayTest, HasTheRowsOfADayInWhichNobodyHeldTheStore)
{
    live(1, 1e9, 0);
    const auto expected = allRows();
    EXPECT_GT(expected.size(), 60U);
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::remove(file("monitor.db" + std::string(suffix)));
    }
    machine.clock.set(kStart);
    machine.userDefaults.setDouble("lastRecordedBootTime", 0);
    machine.kernelFigures.setSwap(SwapFigures{});
    live(1, 1000, 5000);
    EXPECT_EQ(allRows(), expected);
    EXPECT_EQ(countInLog("🔄 数据库恢复写入"), 1U);
}

} // namespace
} // namespace quillbrook
