#pragma once

#include <filesystem>
#include <optional>

namespace quillbrook {

class Directories;

/// Where the engine's files lie. Each path is worked out on first use and then kept.
class MonitorFiles {
public:
    explicit MonitorFiles(const Directories& directories) : directories(directories) {}

    /// The folder of all the others, made on first use, for its owner alone. Fatal when the system
    /// names no place for it; a failure to make it shows in what is opened inside.
    const std::filesystem::path& dataDir();

    const std::filesystem::path& dbPath() { return inDataDir(db, "monitor.db"); }
    const std::filesystem::path& logPath() { return inDataDir(log, "monitor.log"); }
    const std::filesystem::path& pidPath() { return inDataDir(pid, "monitor.pid"); }

private:
    using LazyPath = std::optional<std::filesystem::path>;

    const std::filesystem::path& inDataDir(LazyPath& path, const char* name);

    const Directories& directories;
    LazyPath dir{};
    LazyPath db{};
    LazyPath log{};
    LazyPath pid{};
};

} // namespace quillbrook
