#include "shell/model/CrashReporter.h"

#include "base/AtomicFile.h"
#include "base/IsoTime.h"
#include "base/PrivateFiles.h"
#include "base/Text.h"
#include "platform/BundleValues.h"
#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/HostFacts.h"
#include "platform/TimeZone.h"
#include "platform/Workspace.h"
#include "shell/model/CrashSignals.h"
#include "shell/model/UncaughtException.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <forward_list>
#include <functional>
#include <system_error>
#include <vector>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

/// Whose log receives an uncaught exception; the system's handler knows no object.
CrashReporter* installedReporter = nullptr;

constexpr std::size_t kCrashLogsKept = 20;

/// Whether it is crash-{eight digits}.log.
bool isCrashLogName(std::string_view name)
{
    constexpr std::string_view kBefore = "crash-";
    constexpr std::string_view kBehind = ".log";
    if (!name.starts_with(kBefore) || !name.ends_with(kBehind)) {
        return false;
    }
    name.remove_prefix(kBefore.size());
    name.remove_suffix(kBehind.size());
    return name.size() == 8 && name.find_first_not_of("0123456789") == std::string_view::npos;
}

/// `text` in memory that stays for the life of the process, with a NUL behind it.
const char* keptForever(const std::string& text)
{
    // Never destroyed: a fault may come while the process ends.
    static auto& texts = *new std::forward_list<std::string>;
    return texts.emplace_front(text).c_str();
}

} // namespace

CrashReporter::~CrashReporter()
{
    if (installedReporter == this) {
        installedReporter = nullptr;
    }
    closeCrashTrace();
    if (crashLogFD >= 0) {
        close(crashLogFD);
    }
}

void CrashReporter::install()
{
    createDataDir();
    createRunningMarker();
    openCrashLog();
    writeLaunchBlock();
    // The marker is this launch's own by now, so that the warning comes at every launch; what it
    // tells of the launch before is the last page.
    checkPreviousCrash();
    precomputeSystemInfo();
    installSignalHandlers({.logDescriptor = crashLogFD,
        .header = {precomputedHeader, precomputedHeaderLen},
        .heartbeatPath = keptForever(heartbeatPath().string())});
    installExceptionHandler();
    updateHeartbeat("启动中");
    removeOldCrashLogs();
}

void CrashReporter::updateHeartbeat(std::string_view page)
{
    const auto seconds = static_cast<std::int64_t>(platform.clock.now());
    writeAtomically(heartbeatPath(), filled("{}|{}\n", {std::to_string(seconds), page}));
}

void CrashReporter::markCleanExit()
{
    writeToLog(filled("=== Quillbrook 正常退出 {} ===\n", {localTimestamp()}));
    std::error_code ignored;
    fs::remove(cleanExitPath(), ignored);
    fs::remove(heartbeatPath(), ignored);
    closeCrashTrace();
    if (crashLogFD >= 0) {
        close(crashLogFD);
        crashLogFD = -1;
    }
}

std::string CrashReporter::lastHeartbeat()
{
    std::array<char, kHeartbeatCapacity> buffer{};
    return std::string(readHeartbeat(heartbeatPath().c_str(), buffer));
}

const fs::path& CrashReporter::dataDir()
{
    if (!dir) {
        // Without a directory every file below must fail, and not land in the working directory.
        dir = platform.directories.dataDirectory().value_or("/dev/null");
    }
    return *dir;
}

const fs::path& CrashReporter::heartbeatPath()
{
    if (!heartbeat) {
        heartbeat = dataDir() / "heartbeat.txt";
    }
    return *heartbeat;
}

const fs::path& CrashReporter::cleanExitPath()
{
    if (!cleanExit) {
        cleanExit = dataDir() / "clean_exit";
    }
    return *cleanExit;
}

void CrashReporter::createDataDir()
{
    std::error_code ignored;
    fs::create_directories(dataDir(), ignored);
    takeFromOthers(dataDir());
}

void CrashReporter::createRunningMarker()
{
    writeAtomically(cleanExitPath(), std::to_string(platform.workspace.processIdentifier()));
}

void CrashReporter::openCrashLog()
{
    const double now = platform.clock.now();
    const CivilTime today = civilTime(now, platform.timeZone.secondsFromUtc(now));
    std::array<char, 64> name{};
    std::snprintf(
        name.data(), name.size(), "crash-%04d%02d%02d.log", today.year, today.month, today.day);
    crashLogPath = dataDir() / name.data();
    crashLogFD = open(crashLogPath.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
}

void CrashReporter::removeOldCrashLogs()
{
    std::vector<fs::path> logs;
    std::error_code failure;
    fs::directory_iterator entry(dataDir(), failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        // The present one stays also when a clock was wrong and others are dated after it.
        if (isCrashLogName(entry->path().filename().string()) && entry->path() != crashLogPath) {
            logs.push_back(entry->path());
        }
    }
    std::ranges::sort(logs, std::greater());
    for (std::size_t i = kCrashLogsKept - 1; i < logs.size(); ++i) {
        fs::remove(logs[i], failure);
    }
}

void CrashReporter::writeLaunchBlock()
{
    const OsVersion os = platform.hostFacts.osVersion();
    writeToLog(filled("=== Quillbrook 启动 {} ===\n", {localTimestamp()}));
    writeToLog(filled("Bundle: {}\n", {platform.bundleValues.bundlePath()}));
    writeToLog(filled("Version: {}\n", {version()}));
    writeToLog(filled("macOS: {}.{}.{}\n",
        {std::to_string(os.major), std::to_string(os.minor), std::to_string(os.patch)}));
    writeToLog(filled("PID: {}\n", {std::to_string(platform.workspace.processIdentifier())}));
}

void CrashReporter::checkPreviousCrash()
{
    std::error_code failure;
    if (!fs::exists(cleanExitPath(), failure)) {
        return;
    }
    std::array<char, kHeartbeatCapacity> buffer{};
    std::string_view pid = readHeartbeat(cleanExitPath().c_str(), buffer);
    if (pid == kUnknownHeartbeat) {
        pid = "?";
    }
    const std::string message = filled(
        "⚠️ 检测到上次异常退出！PID: {}，最后页面: {}", {pid, lastHeartbeat()});
    writeToLog(message + "\n");
    logToMonitorFile(message);
}

void CrashReporter::logToMonitorFile(std::string_view message)
{
    const int file = open(logPath(dataDir()).c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    const std::string line = filled("[{}] {}\n", {isoTime(platform.clock.now()), message});
    [[maybe_unused]] const auto written = write(file, line.data(), line.size());
    close(file);
}

void CrashReporter::precomputeSystemInfo()
{
    const std::string path = platform.bundleValues.bundlePath();
    const std::string header = filled(
        "💥 崩溃报告（启动时间: {}）\n版本: {}\nmacOS: {}\nBundle路径: {}\n是否Translocation: {}\n"
        "主机名: {}\n",
        {isoTime(platform.clock.now()), version(), platform.hostFacts.osVersionText(), path,
            path.starts_with("/Volumes/") ? "是 ⚠️" : "否",
            platform.hostFacts.hostName().value_or("unknown")});
    precomputedHeader = keptForever(header);
    precomputedHeaderLen = header.size();
}

void CrashReporter::installExceptionHandler()
{
    installedReporter = this;
    std::set_terminate(handleUncaughtException);
}

void CrashReporter::handleUncaughtException()
{
    if (installedReporter != nullptr) {
        installedReporter->writeExceptionBlock();
    }
    std::abort();
}

void CrashReporter::writeExceptionBlock()
{
    const UncaughtException exception = describeUncaughtException();
    writeToLog(filled("\n💥 NSException 崩溃\n时间: {}\n异常: {}\n原因: {}\n最后页面: {}\n"
                      "Bundle路径: {}\n版本: {}\n堆栈:\n{}\n=== 崩溃日志结束 ===\n\n",
        {isoTime(platform.clock.now()), exception.name, exception.reason.value_or("未知原因"),
            lastHeartbeat(), platform.bundleValues.bundlePath(), version(), callStackText()}));
}

void CrashReporter::writeToLog(std::string_view text) const
{
    if (crashLogFD >= 0) {
        [[maybe_unused]] const auto written = write(crashLogFD, text.data(), text.size());
    }
}

std::string CrashReporter::localTimestamp() const
{
    const double now = platform.clock.now();
    return isoTimeInZone(now, platform.timeZone.secondsFromUtc(now));
}

std::string CrashReporter::version() const
{
    const BundleValues& values = platform.bundleValues;
    return filled("{} ({})",
        {values.infoValue("CFBundleShortVersionString").value_or("0.0.0"),
            values.infoValue("CFBundleVersion").value_or("0")});
}

} // namespace quillbrook
