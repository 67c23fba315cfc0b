#include "bench/SeededStore.h"
#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"
#include "platform/virtual/VirtualApplication.h"
#include "report/DataProvider.h"
#include "shell/DashboardWindowController.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {
namespace {

constexpr StoreSize kMonth{30, 200};
constexpr StoreSize kYear{365, 500};
constexpr StoreSize kTenYears{3650, 500};

/// The dashboard over a store.
class Desk {
public:
    explicit Desk(StoreSize size) : store(SeededStore::ofSize(size)) {}

    void open()
    {
        dashboard.show();
        settle();
    }

    void goTo(NavTab tab)
    {
        dashboard.show(tab);
        settle();
    }

    SeededStore& store;

private:
    /// Runs until the data is published and painted.
    void settle()
    {
        store.machine().runFor(0);
        QApplication::processEvents();
    }

    VirtualApplication application{};
    DashboardWindowController dashboard{store.platform(), application, [](std::string_view) {}};
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

double millisecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken
        = std::chrono::steady_clock::now() - start;
    return taken.count();
}

double middleOf(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// From `show` to the first painted frame with data, the window made anew each time.
void showDashboard(benchmark::State& state)
{
    startQt();
    SeededStore::ofSize(kYear);
    for (auto _ : state) {
        Desk desk(kYear);
        state.SetIterationTime(millisecondsOf([&desk] { desk.open(); }) / 1000);
    }
}

/// From the selection of a page to its painted data, coming from a page without data, in turn with
/// the page's queries alone. `first_ms` is the first switch, which makes the page; `switch_ms` and
/// `queries_ms` are the middle ones of the others, and `own_ms` is the difference.
void switchPage(benchmark::State& state, StoreSize size, NavTab tab)
{
    startQt();
    Desk desk(size);
    desk.open();
    desk.goTo(NavTab::about);
    state.counters["first_ms"] = millisecondsOf([&desk, tab] { desk.goTo(tab); });
    std::vector<double> switches;
    std::vector<double> queries;
    for (auto _ : state) {
        desk.goTo(NavTab::about);
        switches.push_back(millisecondsOf([&desk, tab] { desk.goTo(tab); }));
        queries.push_back(millisecondsOf([&desk, tab] {
            benchmark::DoNotOptimize(
                performRefreshSync(desk.store.platform(), desk.store.path(), {.tab = tab}));
        }));
        state.SetIterationTime(switches.back() / 1000);
    }
    state.counters["switch_ms"] = middleOf(switches);
    state.counters["queries_ms"] = middleOf(queries);
    state.counters["own_ms"] = middleOf(switches) - middleOf(queries);
}

struct PageCase {
    std::string_view name;
    NavTab tab;
};

constexpr PageCase kPages[] = {
    {"Today", NavTab::today},
    {"Past", NavTab::history},
    {"Habit", NavTab::habit},
    {"Tokens", NavTab::keylog},
    {"Focus", NavTab::focus},
    {"Sessions", NavTab::session},
    {"Idles", NavTab::idles},
    {"Alerts", NavTab::alerts},
    {"Future", NavTab::life},
};

void addSwitches(std::string_view place, StoreSize size, int iterations)
{
    for (const PageCase& page : kPages) {
        const std::string name = "switchPage/" + std::string(place) + "/" + std::string(page.name);
        benchmark::RegisterBenchmark(name.c_str(), switchPage, size, page.tab)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(iterations)
            ->UseManualTime();
    }
}

/// Store by store, as only one is kept at a time.
bool addAll()
{
    addSwitches("month", kMonth, 50);
    benchmark::RegisterBenchmark("showDashboard", showDashboard)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(20)
        ->UseManualTime();
    addSwitches("tenYears", kTenYears, 10);
    return true;
}

[[maybe_unused]] const bool kIsAdded = addAll();

} // namespace
} // namespace quillbrook
