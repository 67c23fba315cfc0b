#pragma once

#include "engine/StoreWriter.h"
#include "platform/Platform.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

class MonitorLog;

/// Every statement that the engine runs on the store, and the rows that are under way.
///
/// All times are seconds since 1970, taken when something happens, also where it can only be
/// written later. A failed statement is one log line, and the next one runs all the same; what a
/// store that takes nothing at all is owed, `StoreWriter` keeps. Main thread only.
class MonitorStore {
public:
    MonitorStore(const Platform& platform, MonitorLog& log);

    MonitorStore(const MonitorStore&) = delete;
    MonitorStore& operator=(const MonitorStore&) = delete;

    /// Opens the file, made with its folder when missing. False, with a log line, when SQLite
    /// can't.
    bool dbOpen(const std::filesystem::path& dbPath);
    void dbClose() { writer.close(); }

    /// What is written until its end is there whole, or, when the process dies meanwhile, not at
    /// all.
    class Together {
    public:
        explicit Together(MonitorStore& store) : store(store)
        {
            store.together = StoreWriter::Whole{.isTransaction = true};
        }
        ~Together() { store.writeTogether(); }

        Together(const Together&) = delete;
        Together& operator=(const Together&) = delete;

    private:
        MonitorStore& store;
    };

    /// Holds what is written until the end of the scope together. Nothing is written before.
    [[nodiscard]] Together transaction() { return Together(*this); }

    /// Tries again what the store has not taken yet; nothing when there is nothing. To be called
    /// every second.
    void writeDue() { writer.writeDue(); }

    /// Brings the schema up to date, seeds the categories and records the boot, in one transaction.
    /// Every step runs at every start; a store that is up to date stays as it is.
    void dbCreateTables();

    /// Finishes what a crash left open, in one transaction.
    void dbRepair();

    /// Opens a session row at the present moment and makes it the current one.
    void startNewSession(
        const std::string& appName, const std::string& bundleId, std::int64_t closeType);

    /// Finishes the current session's row, if it is open, at the present moment.
    void closeCurrentSession();

    /// Finishes the current session's row, if it is open, at `endedAt`, and has no current session
    /// from then on.
    void endCurrentSessionAt(double endedAt);

    /// Opens an idle row.
    void startIdlePeriod(double startedAt, std::int64_t sourceType);

    /// Writes an idle row that is over already.
    void addIdlePeriod(double startedAt, double endedAt, std::int64_t sourceType);

    /// Finishes all open idle rows at `endedAt`.
    void closeIdlePeriods(double endedAt);

    /// Finishes all open idle rows at the present moment, as ended by the end of the process.
    void closeIdlePeriodsAtExit();

    /// Writes an alert at the present moment.
    void addAlert(std::string_view alertType, std::string_view severity, const std::string& message,
        const std::string& metricsJson);

    /// Writes one minute's keys. Those that the store doesn't take now are lost.
    void addKeystrokes(double timestamp, const std::string& appName, std::string_view inputMethod,
        std::int32_t count);

    /// Whether a session has existed in this run, and was not ended by `endCurrentSessionAt`.
    bool hasCurrentSession() const;

private:
    void write(StoreWriter::Write write);
    void writeTogether();

    /// Runs one composed statement. False when the store takes nothing.
    bool dbExec(const std::string& sql) { return writer.exec(sql); }

    void createTables();
    void recordBoot();
    void repair(double now);
    void removeDoubledSessions();
    void carryOver();
    void insertSession(const OpenSession& session);
    bool updateCurrentSession(double endedAt);
    void insertIdlePeriod(const OpenIdlePeriod& period);
    void updateIdlePeriods(std::string_view form, double endedAt);
    int insertKeystrokes(double timestamp, const std::string& appName, std::string_view inputMethod,
        std::int32_t count);

    Platform platform;
    MonitorLog& log;
    StoreWriter writer;
    std::optional<StoreWriter::Whole> together{}; // while a transaction is put together
    bool hasSessionWhenWritten = false; // once the store has what is due
};

} // namespace quillbrook
