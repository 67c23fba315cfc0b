#pragma once

#include "base/Lifetime.h"
#include "base/Sqlite.h"
#include "engine/Notifier.h"
#include "engine/StoreFiles.h"
#include "platform/Platform.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {

class MonitorLog;

/// A session that is written, and not finished yet.
struct OpenSession {
    std::string appName{};
    std::string bundleId{};
    double startedAt = 0;
    std::int64_t closeType = 0;
};

/// An idle period that is written, and not finished yet.
struct OpenIdlePeriod {
    double startedAt = 0;
    std::int64_t sourceType = 0;
};

/// What is under way by the rows that the store has, which what is due does not count among.
struct RowsUnderWay {
    std::int64_t currentSessionId = 0; // 0: none in this run; stays when the session has closed
    std::optional<OpenSession> session{};
    std::optional<OpenIdlePeriod> idlePeriod{};
};

/// The one writing connection to the store, and what is to be written through it, in order.
///
/// A statement that fails is one log line, and is not tried again. A store that takes nothing at
/// all (another program writes, the disk is full, the file is read-only) is another thing: what
/// belongs together then waits the time-out of SQLite once, and is kept, with the times that it was
/// made with, until the store takes it; what comes after waits behind it and for nothing else.
///
/// A store that somebody removed, replaced or damaged while it was open is left behind: a damaged
/// one is kept beside under a dated name, the person is told, and recording goes on in the file
/// that takes its place. What somebody else wrote to is looked through beside the main thread
/// first; what is to be written waits for that. Main thread only.
class StoreWriter {
public:
    /// Runs its statements by `exec`, again when the store took nothing. Composed from what it has
    /// captured and from `rows`.
    using Write = std::function<void()>;

    /// Writes that are there whole or not at all.
    struct Whole {
        bool isTransaction = false;
        std::vector<Write> writes{};
    };

    /// What a store is made ready with that takes the place of a lost one.
    using SetUp = std::function<std::vector<Whole>(double now)>;

    StoreWriter(const Platform& platform, MonitorLog& log, SetUp setUp);

    /// Opens the file, made with its folder when missing. The message of SQLite when it can't.
    std::optional<std::string> open(const std::filesystem::path& dbPath);

    /// Closes the store, after a last try to write what is due.
    void close();

    /// Writes, or keeps for later.
    void write(Whole whole);

    /// Tries again what is due; nothing when nothing is. To be called every second.
    void writeDue()
    {
        if (!due.empty()) {
            lookAfterFiles();
            tryDue();
        }
    }

    /// Writes by `insert`, which owns what it has captured, what is not worth keeping for later.
    /// Its result is SQLite's.
    void writeNow(const std::function<int()>& insert);

    bool isAnythingDue() const { return !due.empty(); }

    /// Runs one statement of a `Write`. False when the store takes nothing.
    bool exec(const std::string& sql);

    sqlite3* handle() const { return connection.get(); }

    RowsUnderWay rows{};

private:
    /// Why the store takes nothing.
    struct Refusal {
        int code = 0;
        std::string message{};
    };

    void logFailure(const std::string& message, const std::string& sql);
    bool attempt(const Whole& whole);
    void beginTransaction();
    void endTransaction();
    void keepForLater(Whole whole);
    bool hold(Whole whole);
    void tryDue();
    bool isConnected();
    void endOfRefusal();
    void tellOfLongRefusal();
    void waitForOthers(bool shallWait);

    void lookAfterFiles();
    void checkTouchedStore();
    void checkEnded(bool isSound);
    bool isChecking() const { return checkUnderWay != 0; }
    void reopenWithLog();
    void leaveMissingStore(const std::string& what);
    bool leaveDamagedStore();
    bool leaveForDamage();
    void goOnAfresh(const std::string& what);
    bool isDamaged() const;
    void closeAsItIs();
    void tell(const std::string& what);

    Platform platform;
    MonitorLog& log;
    SetUp setUp;
    Notifier notifier{platform, log};

    std::filesystem::path path{};
    Connection connection{};
    StoreFiles files{};
    bool isOurs = false; // something was written to this store in this run

    std::deque<Whole> due{};
    std::optional<Refusal> refusal{}; // of the last attempt
    bool isSecondTry = false; // its failures have been logged already
    bool isSetUpDue = false;
    double refusedAt = 0; // since when something is due
    std::size_t refusedCount = 0;
    bool isRefusalTold = false;
    double lastDamageAt; // when a damaged store was left last
    int lastCheck = 0;
    int checkUnderWay = 0; // of the whole store, during which nothing is written; 0: none

    Lifetime lifetime{};
};

} // namespace quillbrook
