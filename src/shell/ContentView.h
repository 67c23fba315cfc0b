#pragma once

#include "base/Property.h"
#include "platform/Platform.h"
#include "report/DataProvider.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

class QStackedWidget;

namespace quillbrook {

class EmptyState;
class LoadingState;
class Page;
class Sidebar;

/// The inside of the dashboard window: sidebar, toolbar and the selected page. Here the selection,
/// the periods and the refresh meet.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    /// Remembers the page that the user looks at, by its title, for the case of a crash.
    using Heartbeat = std::function<void(std::string_view page)>;

    ContentView(DataProvider& provider, const Platform& platform, Heartbeat updateHeartbeat,
        QWidget* parent = nullptr);
    ~ContentView() override;

    ContentView(const ContentView&) = delete;
    ContentView& operator=(const ContentView&) = delete;

private:
    void observeSelection();
    template <typename Period>
    void observePeriod(Property<Period>& period);
    void showDetail();
    void openPage(NavTab tab);

    DataProvider& provider;
    Platform platform;
    Heartbeat updateHeartbeat;
    Sidebar* sidebar;
    QStackedWidget* detail;
    LoadingState* loading;
    EmptyState* empty;
    std::unique_ptr<Page> page{}; // made at its selection; what it alone knows goes with it
    NavTab pageTab = NavTab::today;
    std::vector<Subscription> subscriptions{};
};

} // namespace quillbrook
