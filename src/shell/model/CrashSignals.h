#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillbrook {

/// Text of a heartbeat that can't be read.
constexpr std::string_view kUnknownHeartbeat = "未知";

/// Room for a heartbeat; longer ones are cut.
constexpr std::size_t kHeartbeatCapacity = 1024;

/// What the signal handler works with. Whoever hands it over keeps the texts for the life of the
/// process.
struct CrashTrace {
    int logDescriptor = -1; // -1: nothing is written
    std::string_view header{};
    const char* heartbeatPath = ""; // NUL-terminated
};

/// Installs the handler of the six signals of a fault: it writes a block into the log, then lets
/// the process die of the same signal. Nothing in it allocates, locks or reads more than one small
/// file.
void installSignalHandlers(const CrashTrace& trace);

/// From now on a fault writes nothing and goes straight to the default action.
void closeCrashTrace();

/// The text of the file at `path` without white space around it, in `buffer`; `kUnknownHeartbeat`
/// when it can't be read or is no UTF-8. Fit for a signal handler.
std::string_view readHeartbeat(const char* path, std::span<char> buffer);

/// Writes `value` in decimal into `buffer`, with a NUL behind it, and gives the number of digits.
/// Nothing is written, and 0 given, for a negative value or a buffer of less than 2 bytes; a
/// buffer that is too short receives the last digits. Fit for a signal handler.
std::size_t writeInt(std::int64_t value, std::span<char> buffer);

} // namespace quillbrook
