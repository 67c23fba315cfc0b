#pragma once

#include "platform/Application.h"
#include "platform/Platform.h"
#include "report/Periods.h"
#include "shell/model/MenuBarVM.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

class QWidget;

namespace quillbrook {

class DashboardWindow;
class DataProvider;

/// Owns the one dashboard window, which is made when it is first shown and outlives its closing
/// with its data, page and periods. Main thread only; needs the application object.
class DashboardWindowController {
public:
    /// Remembers the page that the user looks at, by its title, for the case of a crash.
    using Heartbeat = std::function<void(std::string_view page)>;
    using Perform = std::function<void(MenuAction)>;

    /// `perform` does for the window's menu what is not the window's own.
    DashboardWindowController(
        const Platform& platform, Application& application, Heartbeat updateHeartbeat,
        Perform perform = [](MenuAction) {});
    ~DashboardWindowController();

    DashboardWindowController(const DashboardWindowController&) = delete;
    DashboardWindowController& operator=(const DashboardWindowController&) = delete;

    /// Opens the dashboard or brings it to the front, on `tab` or, without one, where it was.
    void show(std::optional<NavTab> tab = std::nullopt);

    /// The window; null until it is first shown.
    QWidget* shownWindow() const;

    /// The data of the window; null until it is first shown.
    DataProvider* provider() const { return contentProvider.get(); }

private:
    void postPolicy(ActivationPolicy policy);
    void setIconOnce();
    void makeWindow();
    void addMenu();

    Platform platform;
    Application& application;
    Heartbeat updateHeartbeat;
    Perform perform;
    bool isIconSet = false;
    std::unique_ptr<DataProvider> contentProvider; // outlives the window, which observes it
    std::unique_ptr<DashboardWindow> window;
};

} // namespace quillbrook
