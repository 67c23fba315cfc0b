#pragma once

#include "base/Property.h"
#include "report/DataProvider.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class QStackedWidget;

namespace quillbrook {

class EmptyState;
class LoadingState;
class PastPage;
class Sidebar;
class TodayPage;

/// The inside of the dashboard window: sidebar, toolbar and the selected page. Here the selection,
/// the periods and the refresh meet.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    /// Remembers the page that the user looks at, by its title, for the case of a crash.
    using Heartbeat = std::function<void(std::string_view page)>;

    ContentView(DataProvider& provider, Heartbeat updateHeartbeat, QWidget* parent = nullptr);

private:
    /// The page on screen, and what hands it the present record.
    struct Page {
        NavTab tab = NavTab::today;
        std::unique_ptr<QWidget> widget{};
        std::function<void(const DashboardData&)> setData{};
        Subscription period{}; // keeps the page's picker on the provider's period
    };

    void observeSelection();
    template <typename Period>
    void observePeriod(Property<Period>& period);
    void showDetail();
    Page makePage(NavTab tab);
    template <typename PageWidget, typename Period>
    Page makePeriodPage(NavTab tab, std::unique_ptr<PageWidget> widget, Property<Period>& period);

    DataProvider& provider;
    Heartbeat updateHeartbeat;
    Sidebar* sidebar;
    QStackedWidget* detail;
    LoadingState* loading;
    EmptyState* empty;
    std::optional<Page> page{}; // made at its selection; what it alone knows goes with it
    std::vector<Subscription> subscriptions{};
};

} // namespace quillbrook
