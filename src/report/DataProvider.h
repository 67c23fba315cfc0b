#pragma once

#include "base/Lifetime.h"
#include "base/Property.h"
#include "platform/Platform.h"
#include "report/Periods.h"
#include "report/ReportRecords.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {

/// The read side of the program: which page and periods are selected, and what the store holds for
/// them. The properties tell of every assignment. Main thread only.
///
/// Each refresh reads the store on a connection of its own, off the main thread. Results are not
/// compared with the selection of the moment: of several refreshes under way the last to finish
/// stands. A provider may go while work is under way; nothing is published then.
class DataProvider {
public:
    /// Begins with a refresh for the Today page.
    explicit DataProvider(const Platform& platform);

    /// Starts a refresh for the present selection and returns at once. The pages Future and 关于
    /// read nothing and leave a record as it is.
    void refresh();

    /// Puts an application's identifier into a category for good, or gives it back to the system's
    /// rules when there is no id, then refreshes. Tells of each step on standard output.
    void changeAppCategory(
        const std::string& bundleId, const std::optional<std::int64_t>& categoryId);

    Property<std::optional<DashboardData>> data{}; ///< absent before the first result
    Property<NavTab> selectedTab{NavTab::today};
    Property<std::vector<CategoryTrendPoint>> categoryTrend{}; ///< by date; follows a Habit result
    Property<HistoryPeriod> historyPeriod{HistoryPeriod::today};
    Property<KeylogPeriod> keylogPeriod{KeylogPeriod::today};
    Property<TodayPeriod> todayPeriod{TodayPeriod::today};
    Property<HabitPeriod> habitPeriod{HabitPeriod::today};
    Property<SessionsPeriod> sessionsPeriod{SessionsPeriod::hour1};
    // Not the first case, unlike that of the sessions: idle periods are looked at by the day.
    Property<IdlesPeriod> idlesPeriod{IdlesPeriod::today};
    Property<FocusPeriod> focusPeriod{FocusPeriod::today};
    Property<AlertsPeriod> alertsPeriod{AlertsPeriod::week};
    Property<bool> isLoading{false}; ///< falls at the first result, though more may be under way

private:
    RefreshContext context() const;
    const std::string& dbPath();
    void publish(DashboardData record, bool isHabit);
    void loadCategoryTrendDeferred();

    Platform platform;
    std::optional<std::string> path{};
    Lifetime lifetime{};
};

/// What the store at `dbPath` holds for a selection; the empty record when it can't be opened. Any
/// thread.
DashboardData performRefreshSync(
    const Platform& platform, const std::string& dbPath, const RefreshContext& ctx);

} // namespace quillbrook
