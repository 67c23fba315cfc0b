#include "engine/StoreWriter.h"

#include "base/OlderThread.h"
#include "base/Text.h"
#include "engine/MonitorLog.h"
#include "engine/StoreCheck.h"
#include "platform/Clock.h"
#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"

#include <iterator>
#include <limits>
#include <system_error>
#include <utility>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

constexpr int kBusyTimeoutMs = 5000;
constexpr double kBusyTimeoutSec = 5;
constexpr double kTellAfterSec = 60;
constexpr double kDamageIntervalSec = 600; // a broken disk must not make a kept file each second
constexpr std::size_t kMostDue = 10'000; // some megabytes; days of work

/// Whether a failure is the store's, which then takes nothing, and not the statement's.
bool isOfStore(int result)
{
    switch (result & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_NOMEM:
    case SQLITE_READONLY:
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_FULL:
    case SQLITE_CANTOPEN:
    case SQLITE_PROTOCOL:
    case SQLITE_PERM:
    case SQLITE_NOTADB:
        return true;
    default:
        return false;
    }
}

int run(const Connection& connection, const char* sql)
{
    return sqlite3_exec(connection.get(), sql, nullptr, nullptr, nullptr);
}

} // namespace

StoreWriter::StoreWriter(const Platform& platform, MonitorLog& log, SetUp setUp)
    : platform(platform)
    , log(log)
    , setUp(std::move(setUp))
    , lastDamageAt(-std::numeric_limits<double>::infinity())
{
}

std::optional<std::string> StoreWriter::open(const fs::path& dbPath)
{
    path = dbPath;
    onOlderThread([this] {
        std::error_code ignored;
        if (fs::create_directories(path.parent_path(), ignored)) {
            fs::permissions(path.parent_path(), fs::perms::owner_all, ignored);
        }
    });
    OpenedConnection opened
        = openConnection(path.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    connection = std::move(opened.connection);
    if (opened.result != SQLITE_OK) {
        return sqlite3_errmsg(connection.get());
    }
    // Somebody's long transaction lets the write-ahead log grow: behind it the file is cut again.
    for (const char* pragma : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL",
             "PRAGMA busy_timeout=5000", "PRAGMA journal_size_limit=4194304"}) {
        run(connection, pragma);
    }
    files.remember(path);
    return std::nullopt;
}

void StoreWriter::close()
{
    if (isChecking()) {
        checkEnded(isStoreSound(path));
    }
    if (!due.empty()) {
        // What has just waited for another program does not wait again.
        waitForOthers(platform.clock.now() - refusedAt >= kBusyTimeoutSec);
        writeDue();
    }
    if (!due.empty()) {
        log.log(filled("⚠️ 数据库仍无法写入，{} 项记录未能保存",
            {std::to_string(due.size())}));
        due.clear();
    }
    connection.reset();
    files.forget();
    path.clear();
    isOurs = false;
}

void StoreWriter::closeAsItIs()
{
    if (connection) {
        // The files at the path may be others than ours.
        sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        connection.reset();
    }
    files.forget();
}

bool StoreWriter::exec(const std::string& sql)
{
    if (!refusal) {
        const int result = run(connection, sql.c_str());
        if (result == SQLITE_OK) {
            return true;
        }
        if (!isOfStore(result)) {
            logFailure(sqlite3_errmsg(connection.get()), sql);
            return true;
        }
        refusal = Refusal{result, sqlite3_errmsg(connection.get())};
    }
    if (!isSecondTry) {
        logFailure(refusal->message, sql);
    }
    return false;
}

void StoreWriter::logFailure(const std::string& message, const std::string& sql)
{
    log.log(filled("⚠️ SQL 错误: {} — {}", {message, firstCharacters(sql, 80)}));
}

void StoreWriter::write(Whole whole)
{
    lookAfterFiles();
    if (isChecking()) {
        hold(std::move(whole));
        return;
    }
    tryDue();
    if (due.empty() && isConnected()) {
        if (attempt(whole)) {
            return;
        }
    } else {
        for (const Write& write : whole.writes) {
            write(); // which says of each statement that the store doesn't take it
        }
    }
    keepForLater(std::move(whole));
    if (isDamaged() && leaveDamagedStore()) {
        tryDue();
    }
}

void StoreWriter::writeNow(const std::function<int()>& insert)
{
    lookAfterFiles();
    if (isChecking()) {
        hold({.writes = {[insert] { insert(); }}});
        return;
    }
    tryDue();
    if (due.empty()) {
        isConnected();
    }
    const int result = insert();
    files.noteOwnWrite();
    if (isOfStore(result)) {
        refusal = Refusal{result, sqlite3_errmsg(connection.get())};
        if (isDamaged() && leaveDamagedStore()) {
            tryDue();
        }
    }
}

bool StoreWriter::attempt(const Whole& whole)
{
    const RowsUnderWay before = rows;
    refusal.reset();
    if (whole.isTransaction) {
        beginTransaction();
    }
    for (const Write& write : whole.writes) {
        write();
    }
    if (whole.isTransaction) {
        endTransaction();
    }
    files.noteOwnWrite();
    if (refusal) {
        rows = before;
        return false;
    }
    isOurs = true;
    return true;
}

void StoreWriter::beginTransaction()
{
    // The lock for writing comes first: it is waited for once, not by each statement, and what is
    // refused is refused before anything is written. The statements tell that themselves.
    const int result = run(connection, "BEGIN IMMEDIATE");
    if (isOfStore(result)) {
        refusal = Refusal{result, sqlite3_errmsg(connection.get())};
    } else if (result != SQLITE_OK) {
        logFailure(sqlite3_errmsg(connection.get()), "BEGIN");
    }
}

void StoreWriter::endTransaction()
{
    if (!refusal) {
        exec("COMMIT");
    }
    if (refusal && sqlite3_get_autocommit(connection.get()) == 0) {
        run(connection, "ROLLBACK");
    }
}

void StoreWriter::keepForLater(Whole whole)
{
    if (due.empty()) {
        waitForOthers(false);
    }
    if (hold(std::move(whole))) {
        ++refusedCount;
    }
}

bool StoreWriter::hold(Whole whole)
{
    if (due.size() >= kMostDue) {
        return false;
    }
    if (due.empty()) {
        refusedAt = platform.clock.now();
    }
    due.push_back(std::move(whole));
    return true;
}

void StoreWriter::waitForOthers(bool shallWait)
{
    if (connection) {
        sqlite3_busy_timeout(connection.get(), shallWait ? kBusyTimeoutMs : 0);
    }
}

void StoreWriter::tryDue()
{
    if (due.empty() || isChecking()) {
        return;
    }
    isSecondTry = true;
    while (!due.empty() && isConnected()) {
        if (attempt(due.front())) {
            due.pop_front();
        } else if (!isDamaged() || !leaveDamagedStore()) {
            break;
        }
    }
    isSecondTry = false;
    if (due.empty()) {
        endOfRefusal();
    } else {
        tellOfLongRefusal();
    }
}

bool StoreWriter::isConnected()
{
    // What was read-only when it was opened stays so for its connection.
    if (refusal && (refusal->code & 0xFF) == SQLITE_READONLY) {
        closeAsItIs();
        files.letLogBeWritten();
    }
    if (!connection) {
        const auto message = path.empty() ? std::optional<std::string>("closed") : open(path);
        if (message) {
            refusal = Refusal{SQLITE_CANTOPEN, *message};
            connection.reset();
            return false;
        }
        waitForOthers(due.empty());
    }
    refusal.reset();
    return true;
}

void StoreWriter::endOfRefusal()
{
    waitForOthers(true);
    isRefusalTold = false;
    if (refusedCount > 0) {
        log.log(filled("🔄 数据库恢复写入，已补写 {} 项记录", {std::to_string(refusedCount)}));
        refusedCount = 0;
    }
}

void StoreWriter::tellOfLongRefusal()
{
    if (!isRefusalTold && platform.clock.now() - refusedAt >= kTellAfterSec) {
        isRefusalTold = true;
        tell(
            filled("数据库无法写入（{}），新记录暂存在内存中，恢复后自动补写", {refusal->message}));
    }
}

void StoreWriter::tell(const std::string& what)
{
    log.log("⚠️ " + what);
    notifier.sendNotification("Quillbrook 数据库异常", what);
}

void StoreWriter::lookAfterFiles()
{
    if (isChecking()) {
        return;
    }
    switch (files.look()) {
    case StoreFilesState::untouched:
        return;
    case StoreFilesState::touched:
        checkTouchedStore();
        return;
    case StoreFilesState::logLost:
        reopenWithLog();
        return;
    case StoreFilesState::replaced:
        leaveMissingStore("数据库文件被替换，已改用现在的文件继续记录");
        return;
    case StoreFilesState::gone:
        leaveMissingStore("数据库文件被删除或移走，已新建数据库继续记录");
        return;
    }
}

void StoreWriter::checkTouchedStore()
{
    // Ten years are read in a moment that the windows would stand still for.
    checkUnderWay = ++lastCheck;
    platform.workQueues.runDefault([this, watch = lifetime.watch(), check = lastCheck, store = path,
                                       &mainLoop = platform.mainLoop] {
        const bool isSound = isStoreSound(store);
        mainLoop.post([this, watch, check, isSound] {
            if (!watch.isOver() && check == checkUnderWay) {
                checkEnded(isSound);
            }
        });
    });
}

void StoreWriter::checkEnded(bool isSound)
{
    checkUnderWay = 0;
    const StoreFilesState state = files.look();
    if (state != StoreFilesState::touched && state != StoreFilesState::untouched) {
        lookAfterFiles(); // worse came meanwhile
    } else if (isSound) {
        // What the connection remembers of the file may be no longer so.
        closeAsItIs();
        isConnected();
    } else {
        leaveForDamage();
    }
    tryDue();
}

void StoreWriter::reopenWithLog()
{
    // Others can't see the log that we have open: what it holds goes into the store before anything
    // else is written. While a reader holds that up, the next write tries again.
    int framesInLog = 0;
    int framesBroughtHome = 0;
    const int result = sqlite3_wal_checkpoint_v2(
        connection.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, &framesInLog, &framesBroughtHome);
    files.noteOwnWrite();
    if (result != SQLITE_OK || framesBroughtHome < framesInLog) {
        return;
    }
    closeAsItIs();
    log.log("⚠️ 数据库的日志文件丢失，内容已写回数据库，继续记录");
    isConnected();
}

void StoreWriter::leaveMissingStore(const std::string& what)
{
    // A store that was only moved away gets what its log still holds.
    sqlite3_wal_checkpoint_v2(
        connection.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    files.removeRests();
    closeAsItIs();
    goOnAfresh(what);
}

bool StoreWriter::isDamaged() const
{
    if (!refusal) {
        return false;
    }
    // A file that was no store of ours to begin with is nobody's to move.
    const int code = refusal->code & 0xFF;
    return code == SQLITE_CORRUPT || (code == SQLITE_NOTADB && isOurs);
}

bool StoreWriter::leaveDamagedStore()
{
    const double now = platform.clock.now();
    if (now - lastDamageAt < kDamageIntervalSec || !leaveForDamage()) {
        return false;
    }
    lastDamageAt = now;
    return true;
}

bool StoreWriter::leaveForDamage()
{
    const auto kept = files.setAside(platform.clock.now());
    if (!kept) {
        return false;
    }
    closeAsItIs();
    goOnAfresh(
        filled("数据库文件已损坏，保留为 {}，已新建数据库继续记录", {kept->filename().string()}));
    return true;
}

void StoreWriter::goOnAfresh(const std::string& what)
{
    tell(what);
    if (isSetUpDue) {
        return; // the store that it was for is lost, too
    }
    if (due.empty()) {
        refusedAt = platform.clock.now();
    }
    std::vector<Whole> first = setUp(platform.clock.now());
    isSetUpDue = true;
    first.push_back({.writes = {[this] { isSetUpDue = false; }}});
    due.insert(due.begin(), std::move_iterator(first.begin()), std::move_iterator(first.end()));
}

} // namespace quillbrook
