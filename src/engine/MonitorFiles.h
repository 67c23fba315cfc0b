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

    const std::filesystem::path& dbPath();
    const std::filesystem::path& logPath();
    const std::filesystem::path& pidPath();

private:
    using LazyPath = std::optional<std::filesystem::path>;

    const Directories& directories;
    LazyPath dir{};
    LazyPath db{};
    LazyPath log{};
    LazyPath pid{};
};

} // namespace quillbrook
