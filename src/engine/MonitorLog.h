#pragma once

#include "engine/LogFile.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quillbrook {

class Clock;

/// A span of time as log lines show it: "59s", "59m59s", "2h2m". Cut, never rounded; negative
/// spans in seconds. Fatal when `seconds` is not finite or beyond 64 bits.
std::string fmtDuration(double seconds);

/// The engine's log: "[2026-01-31T08:05:09Z] message", in UTC, at the end of a file and to standard
/// output. There are no levels. Failures to write are ignored.
class MonitorLog {
public:
    explicit MonitorLog(const Clock& clock) : clock(clock) {}

    /// Opens the file, made when missing. When it can't be opened, lines go to standard output
    /// only.
    void openFile(const std::filesystem::path& path) { file.open(path); }
    void closeFile() { file.close(); }

    /// Writes one line. Bytes of `message` that are not UTF-8 become U+FFFD.
    void log(std::string_view message);

private:
    const Clock& clock;
    LogFile file{};
};

} // namespace quillbrook
