#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "engine/MonitorEngine.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/model/CrashReporter.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

constexpr double kStart = 1767225600; // 2026-01-01T00:00:00Z
constexpr double kDaySec = 86400;
constexpr int kMinutesADay = 480; // of work, with a switch and keys in each
constexpr int kDaysABoot = 30;

/// A person who works every day for years, and what the program leaves on the disk. The minutes are
/// lived without most of their ticks: these write nothing.
class Decade {
public:
    explicit Decade(fs::path folder) : directory(std::move(folder)) {}

    void live(int days)
    {
        for (int day = 0; day < days; ++day) {
            if (day % kDaysABoot == 0) {
                boot();
            }
            work();
            look();
            sleep();
        }
    }

    /// Another program's transaction that lasts for days, and the day behind it.
    void readFor(int days)
    {
        {
            const OpenedConnection reader
                = openConnection(storePath(directory).string(), SQLITE_OPEN_READONLY);
            run(reader, "BEGIN");
            run(reader, "SELECT COUNT(*) FROM boot_events");
            for (int day = 0; day < days; ++day) {
                work();
                sleep();
            }
            std::fprintf(
                stderr, "a reader of %d days: write-ahead log %ju", days, size("monitor.db-wal"));
        }
        work();
        std::fprintf(stderr, ", a day behind it %ju\n", size("monitor.db-wal"));
    }

    void tell(int year) const
    {
        std::fprintf(stderr,
            "year %d: store %ju, log at most %ju and %ju, write-ahead log at most %ju, "
            "%td crash logs, %td files; last start %.2f s\n",
            year, size("monitor.db"), mostLog, size("monitor.log.1"), mostWal, crashLogs(),
            std::distance(fs::directory_iterator(directory), {}), startSec);
    }

private:
    void boot()
    {
        if (engine) {
            engine->stop();
            reporter->markCleanExit();
            engine.reset();
            reporter.reset();
            machine.endProcess();
        }
        const auto begun = std::chrono::steady_clock::now();
        reporter = std::make_unique<CrashReporter>(machine.platform());
        reporter->install();
        engine = std::make_unique<MonitorEngine>(machine.platform());
        engine->start();
        startSec = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
    }

    void work()
    {
        for (int minute = 0; minute < kMinutesADay; ++minute) {
            const std::string name = "Application " + std::to_string(minute % 30);
            machine.bringToFront(name, "org.example." + std::to_string(minute % 30));
            machine.keyCounting.press(100);
            const double load = minute % 240 > 200 ? 30 : 1;
            machine.kernelFigures.setLoadAverages({load, load, load});
            machine.humanInput.happenNow();
            machine.runFor(4);
            machine.mainLoop.jumpTo(machine.clock.now() + 56);
            machine.humanInput.happenNow();
        }
    }

    void sleep()
    {
        machine.workspace.notify(WorkspaceNotification::willSleep);
        machine.runFor(1);
        machine.mainLoop.jumpTo(machine.clock.now() + kDaySec - kMinutesADay * 60.0 - 1);
        machine.workspace.notify(WorkspaceNotification::didWake);
    }

    void look()
    {
        mostLog = std::max(mostLog, size("monitor.log"));
        mostWal = std::max(mostWal, size("monitor.db-wal"));
    }

    std::uintmax_t size(const char* name) const
    {
        std::error_code failure;
        const std::uintmax_t bytes = fs::file_size(directory / name, failure);
        return failure ? 0 : bytes;
    }

    std::ptrdiff_t crashLogs() const
    {
        return std::count_if(fs::directory_iterator(directory), {}, [](const auto& entry) {
            return entry.path().filename().string().starts_with("crash-");
        });
    }

    static void run(const OpenedConnection& store, const char* sql)
    {
        if (sqlite3_exec(store.connection.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            fatal(sqlite3_errmsg(store.connection.get()));
        }
    }

    fs::path directory;
    VirtualMachine machine{directory, kStart};
    std::unique_ptr<CrashReporter> reporter{};
    std::unique_ptr<MonitorEngine> engine{};
    std::uintmax_t mostLog = 0;
    std::uintmax_t mostWal = 0;
    double startSec = 0;
};

} // namespace
} // namespace quillbrook

/// `decade [YEARS [DAYS]]`: what so many years leave on the disk, in bytes, and what the
/// write-ahead log grows to under a transaction of so many days.
int main(int argc, char** argv)
{
    std::string folder = (std::filesystem::temp_directory_path() / "quillbrook-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    {
        quillbrook::Decade decade(folder);
        for (int year = 1; year <= (argc > 1 ? std::atoi(argv[1]) : 10); ++year) {
            decade.live(365);
            decade.tell(year);
        }
        decade.readFor(argc > 2 ? std::atoi(argv[2]) : 30);
    }
    std::filesystem::remove_all(folder);
    return 0;
}
