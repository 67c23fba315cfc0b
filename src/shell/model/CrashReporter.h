#pragma once

#include "platform/Platform.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// Leaves a readable trace in the data directory when the process dies of a fault or an uncaught
/// exception, and remembers the last page that the user looked at: the log crash-{date}.log and
/// the small files clean_exit and heartbeat.txt, which last as long as the process runs. Of the
/// logs the newest twenty are kept.
///
/// No failure of a file ever stops the program. Main thread only; one for each process.
class CrashReporter {
public:
    explicit CrashReporter(const Platform& platform) : platform(platform) {}
    ~CrashReporter();

    CrashReporter(const CrashReporter&) = delete;
    CrashReporter& operator=(const CrashReporter&) = delete;

    /// Begins the log and catches faults from now on. Once, before anything else is started.
    void install();

    /// Remembers `page` as the last one, with the present time.
    void updateHeartbeat(std::string_view page);

    /// Ends the log and removes the marks of a running process.
    void markCleanExit();

    /// The line of the last `updateHeartbeat`, of this process or one before; `kUnknownHeartbeat`
    /// when there is none to read.
    std::string lastHeartbeat();

private:
    using LazyPath = std::optional<std::filesystem::path>;

    const std::filesystem::path& dataDir();
    const std::filesystem::path& heartbeatPath();
    const std::filesystem::path& cleanExitPath();

    void createDataDir();
    void createRunningMarker();
    void openCrashLog();
    void removeOldCrashLogs();
    void writeLaunchBlock();
    void checkPreviousCrash();
    void logToMonitorFile(std::string_view message);
    void precomputeSystemInfo();
    void installExceptionHandler();
    void writeExceptionBlock();
    [[noreturn]] static void handleUncaughtException();

    void writeToLog(std::string_view text) const;
    std::string localTimestamp() const;
    std::string version() const;

    Platform platform;
    LazyPath dir{};
    LazyPath heartbeat{};
    LazyPath cleanExit{};
    int crashLogFD = -1; // -1 while no log is open
    std::filesystem::path crashLogPath{};
    const char* precomputedHeader = nullptr; // never freed, as a fault may come at any time
    std::size_t precomputedHeaderLen = 0; // bytes, without the NUL
};

} // namespace quillbrook
