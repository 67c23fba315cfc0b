#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "engine/MonitorEngine.h"
#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"
#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/DataProvider.h"
#include "shell/DashboardWindowController.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

constexpr double kNow = 1767225600 + 15 * 3600; // 23:00 in UTC+8
constexpr int kSessionsADay = 500;

/// A virtual machine with a store of the last `days` days, and the dashboard's surroundings.
class Desk {
public:
    explicit Desk(int days)
    {
        std::string pattern = (fs::temp_directory_path() / "quillbrook-bench-XXXXXX").string();
        directory = ::mkdtemp(pattern.data());
        machine = std::make_unique<VirtualMachine>(directory, kNow);
        {
            MonitorEngine engine(machine->platform());
            engine.start();
            engine.stop();
        }
        machine->endProcess();
        fillStore(days);
    }
    ~Desk()
    {
        dashboard.reset();
        machine.reset();
        fs::remove_all(directory);
    }

    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    void open()
    {
        dashboard = std::make_unique<DashboardWindowController>(
            machine->platform(), application, [](std::string_view) {});
        dashboard->show();
        settle();
    }

    /// Runs until the data is published and painted.
    void settle()
    {
        machine->runFor(0);
        QApplication::processEvents();
    }

    std::string storePath() const { return quillbrook::storePath(directory).string(); }

    fs::path directory{};
    std::unique_ptr<VirtualMachine> machine{};
    VirtualApplication application{};
    std::unique_ptr<DashboardWindowController> dashboard{};

private:
    void fillStore(int days)
    {
        const auto store = openConnection(storePath(), SQLITE_OPEN_READWRITE).connection;
        const std::string from = shortestText(kNow - days * 86400.0);
        const std::string sql = filled(
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < {}) "
            "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
            "close_type) SELECT 'Application ' || (i * 7 % 30), 'org.example.a' || (i * 7 % 30), "
            "{} + i * 172.8 + 0.123, {} + i * 172.8 + 100.623, 100.5, 1 FROM n",
            {std::to_string(days * kSessionsADay), from, from});
        if (sqlite3_exec(store.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            fatal(sqlite3_errmsg(store.get()));
        }
    }
};

/// The one application object of the program, off screen.
void startQt()
{
    static int count = 1;
    static char name[] = "pages_bench";
    static char* values[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never destroyed: at the process's end Qt's own statics go before it.
    static const auto* application = new QApplication(count, values);
    benchmark::DoNotOptimize(application);
    installAccessibleViews();
    Look::apply(false, std::nullopt);
}

/// From `show` to the first painted frame with data, the window made anew each time.
void showDashboard(benchmark::State& state)
{
    startQt();
    Desk desk(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        desk.open();
        state.PauseTiming();
        desk.dashboard.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(showDashboard)->Arg(365)->Unit(benchmark::kMillisecond)->Iterations(20);

/// From the selection of the other of two pages to its painted data.
void switchPage(benchmark::State& state)
{
    startQt();
    Desk desk(static_cast<int>(state.range(0)));
    desk.open();
    bool isPast = false;
    for (auto _ : state) {
        isPast = !isPast;
        desk.dashboard->show(isPast ? NavTab::history : NavTab::today);
        desk.settle();
    }
}
BENCHMARK(switchPage)->Arg(365)->Unit(benchmark::kMillisecond)->Iterations(100);

/// The queries alone that `switchPage` waits for.
void switchPageQueries(benchmark::State& state)
{
    Desk desk(static_cast<int>(state.range(0)));
    bool isPast = false;
    for (auto _ : state) {
        isPast = !isPast;
        const RefreshContext context{.tab = isPast ? NavTab::history : NavTab::today};
        benchmark::DoNotOptimize(
            performRefreshSync(desk.machine->platform(), desk.storePath(), context));
    }
}
BENCHMARK(switchPageQueries)->Arg(365)->Unit(benchmark::kMillisecond)->Iterations(100);

} // namespace
} // namespace quillbrook
