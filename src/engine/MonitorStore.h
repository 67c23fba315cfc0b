#pragma once

#include "base/Sqlite.h"
#include "platform/Platform.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace quillbrook {

class MonitorLog;

/// The one writing connection to the store, and every statement that the engine runs on it.
///
/// All times are seconds since 1970. A failed statement is one log line, and the next one runs all
/// the same; nothing is retried. Main thread only.
class MonitorStore {
public:
    MonitorStore(const Platform& platform, MonitorLog& log) : platform(platform), log(log) {}

    /// Opens the file, made with its folder when missing. False, with a log line, when SQLite
    /// can't.
    bool dbOpen(const std::filesystem::path& dbPath);
    void dbClose() { connection.reset(); }

    /// Runs one composed statement.
    void dbExec(const std::string& sql);

    /// Holds what is written until the end of the scope together.
    [[nodiscard]] Transaction transaction()
    {
        return Transaction([this](const std::string& sql) { dbExec(sql); });
    }

    bool hasColumn(const std::string& table, std::string_view column) const;

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

    /// Writes one minute's keys.
    void addKeystrokes(double timestamp, const std::string& appName, std::string_view inputMethod,
        std::int32_t count);

    /// Whether a session has existed in this run, and was not ended by `endCurrentSessionAt`.
    bool hasCurrentSession() const { return currentSessionId != 0; }

private:
    void recordBoot();
    void removeDoubledSessions();

    Platform platform;
    MonitorLog& log;
    Connection connection{};
    std::int64_t currentSessionId = 0; // 0: none in this run; stays when the session has closed
};

} // namespace quillbrook
