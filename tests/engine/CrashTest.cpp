#include "support/EngineFixture.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <optional>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using enum WorkspaceNotification;

/// The engine's end without an orderly stop, at every kind of moment, and the start after it.
class CrashTest : public EngineFixture {
protected:
    /// Runs `life` in a process of its own that is killed behind it.
    void liveAndDie(const std::function<void()>& life)
    {
        const pid_t child = fork();
        if (child == 0) {
            std::freopen("/dev/null", "w", stdout);
            life();
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        ASSERT_EQ(WTERMSIG(status), SIGKILL);
        EXPECT_EQ(store().value("PRAGMA integrity_check"), "ok");
    }

    /// The start after the crash, `seconds` after the beginning.
    void startAgainAt(double seconds)
    {
        machine.clock.set(kStart + seconds);
        start();
        EXPECT_EQ(store().value("PRAGMA integrity_check"), "ok");
    }
};

TEST_F(CrashTest, KilledInASession)
{
    liveAndDie([this] { startWorkingIn("Editor"); });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    startAgainAt(1000);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(CrashTest, KilledAfterASwitch)
{
    liveAndDie([this] {
        startWorkingIn("Editor");
        bringToFront("Mail");
        machine.runFor(3);
    });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    startAgainAt(1000);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
}

TEST_F(CrashTest, KilledWhileASwitchIsWaiting)
{
    liveAndDie([this] {
        startWorkingIn("Editor");
        bringToFront("Mail");
        machine.runFor(2);
    });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(CrashTest, KilledWhileLocked)
{
    liveAndDie([this] {
        startWorkingIn("Editor");
        machine.workspace.notify(screensDidSleep);
        machine.runFor(5);
    });
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|3"));
    startAgainAt(1000);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|1000|4"));
}

TEST_F(CrashTest, KilledBetweenTheAnnouncementOfSleepAndTheTick)
{
    liveAndDie([this] {
        startWorkingIn("Editor");
        machine.workspace.notify(willSleep);
    });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    startAgainAt(1000);
    EXPECT_THAT(idlePeriods(), IsEmpty());
}

TEST_F(CrashTest, KilledAsleep)
{
    liveAndDie([this] {
        startWorkingIn("Editor");
        machine.workspace.notify(willSleep);
        machine.runFor(1);
    });
    startAgainAt(1000);
    EXPECT_THAT(idlePeriods(), ElementsAre("61|1000|4"));
}

TEST_F(CrashTest, KilledGoneIdleByTimeout)
{
    liveAndDie([this] {
        startWorkingIn("Editor");
        machine.mainLoop.runBefore(kStart + 3659);
        machine.runFor(600);
    });
    EXPECT_EQ(idlePeriods().back(), "3660|NULL|1");
    startAgainAt(9000);
    EXPECT_EQ(idlePeriods().back(), "3660|9000|4");
}

TEST_F(CrashTest, KilledBeforeTheFirstSession)
{
    liveAndDie([this] {
        bringToFront("Editor");
        start();
        machine.runFor(30);
    });
    startAgainAt(1000);
    EXPECT_THAT(sessions(), IsEmpty());
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_categories"), "113");
}

/// Deaths at a commit. What one change writes is committed once; without its transaction each
/// statement would be a commit of its own, and the death at the second would leave half a change.
class CommitCrashTest : public CrashTest {
protected:
    /// Works in an editor for a minute, does `changes`, and dies at the commit after so many of
    /// theirs.
    void dieAfterCommits(int count, const std::function<void()>& changes)
    {
        liveAndDie([&] {
            countCommitsOfNewConnections();
            startWorkingIn("Editor");
            commitsToLive = count;
            changes();
        });
    }

    static void countCommitsOfNewConnections()
    {
        sqlite3_auto_extension(
            reinterpret_cast<void (*)()>(+[](sqlite3* connection, const char**, const void*) {
                sqlite3_commit_hook(connection, countCommit, nullptr);
                return SQLITE_OK;
            }));
    }

    static inline std::optional<int> commitsToLive{}; // set in the process that dies alone

    void switchToMailAndMusic()
    {
        bringToFront("Mail");
        machine.runFor(3);
        bringToFront("Music");
        machine.runFor(3);
    }

    void lockAndUnlockTwice()
    {
        for (int round = 0; round < 2; ++round) {
            machine.workspace.notify(screensDidSleep);
            machine.runFor(5);
            machine.workspace.notify(screensDidWake);
            machine.runFor(5);
        }
    }

private:
    static int countCommit(void*)
    {
        if (commitsToLive && (*commitsToLive)-- == 0) {
            kill(getpid(), SIGKILL);
        }
        return 0;
    }
};

TEST_F(CommitCrashTest, OfASwitchNothingIsThereBeforeItsCommit)
{
    dieAfterCommits(0, [this] { switchToMailAndMusic(); });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    startAgainAt(1000);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(CommitCrashTest, ASwitchIsOneCommit)
{
    dieAfterCommits(1, [this] { switchToMailAndMusic(); });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    startAgainAt(1000);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
}

TEST_F(CommitCrashTest, OfAPauseNothingIsThereBeforeItsCommit)
{
    dieAfterCommits(0, [this] { lockAndUnlockTwice(); });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(idlePeriods(), IsEmpty());
}

TEST_F(CommitCrashTest, APauseIsOneCommit)
{
    dieAfterCommits(1, [this] { lockAndUnlockTwice(); });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|3"));
}

TEST_F(CommitCrashTest, AReturnIsOneCommit)
{
    dieAfterCommits(2, [this] { lockAndUnlockTwice(); });
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1", "Editor|66|NULL|3"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|66|3"));
}

TEST_F(CommitCrashTest, TheSchemaAndItsRowsAreOneCommit)
{
    liveAndDie([this] {
        countCommitsOfNewConnections();
        commitsToLive = 2; // the change to the write-ahead log, and the schema
        start();
    });
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_categories"), "113");
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM boot_events"), "1");
}

TEST_F(CrashTest, SixtyDeathsLoseNoCommittedRow)
{
    for (int round = 0; round < 60; ++round) {
        liveAndDie([this, round] {
            startWorkingIn("Editor");
            for (int i = 0; i < round % 12; ++i) {
                bringToFront("App" + std::to_string(i));
                machine.runFor(3);
            }
        });
        machine.clock.set(machine.clock.now() + 1000);
    }
    // 60 sessions of the editor and 5 rounds of 0 to 11 switches.
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_sessions"), "390");
    start();
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_sessions WHERE ended_at IS NULL"), "1");
}

TEST_F(CrashTest, AnEngineThatIsDestroyedWritesNothing)
{
    startWorkingIn("Editor");
    crash();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(logText(), testing::Not(testing::HasSubstr("🛑")));
    EXPECT_TRUE(std::filesystem::exists(file("monitor.pid")));
}

} // namespace
} // namespace quillbrook
