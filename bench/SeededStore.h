#pragma once

#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "engine/MonitorEngine.h"
#include "lab/SeedHistory.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/StoreQuery.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace quillbrook {

/// How much history a store holds.
struct StoreSize {
    int days = 365;
    int sessionsADay = 200;

    bool operator==(const StoreSize&) const = default;
};

/// A store as the engine makes it, with history up to the present of its virtual machine.
class SeededStore {
public:
    explicit SeededStore(StoreSize size) : size(size)
    {
        MonitorEngine engine(virtualMachine.platform());
        engine.start();
        engine.stop();
        virtualMachine.endProcess();
        const Connection store = open(SQLITE_OPEN_READWRITE);
        if (!lab::seedHistory(store.get(),
                {.days = size.days, .now = kNow, .sessionsPerDay = size.sessionsADay})) {
            fatal(sqlite3_errmsg(store.get()));
        }
    }
    ~SeededStore() { std::filesystem::remove_all(directory); }

    SeededStore(const SeededStore&) = delete;
    SeededStore& operator=(const SeededStore&) = delete;

    /// The store of that size. Made when the last one asked for was another, which then goes.
    static SeededStore& ofSize(StoreSize size)
    {
        static std::unique_ptr<SeededStore> present;
        if (!present || present->size != size) {
            present.reset();
            present = std::make_unique<SeededStore>(size);
        }
        return *present;
    }

    VirtualMachine& machine() { return virtualMachine; }
    Platform platform() { return virtualMachine.platform(); }
    std::string path() const { return storePath(directory).string(); }
    Connection open(int flags) const { return openConnection(path(), flags).connection; }

    static constexpr double kNow = 1767268800; // 2026-01-01T20:00:00+08:00

private:
    static std::filesystem::path makeDirectory()
    {
        std::string pattern
            = (std::filesystem::temp_directory_path() / "quillbrook-bench-XXXXXX").string();
        return ::mkdtemp(pattern.data());
    }

    StoreSize size;
    std::filesystem::path directory = makeDirectory();
    VirtualMachine virtualMachine{directory, kNow};
};

} // namespace quillbrook
