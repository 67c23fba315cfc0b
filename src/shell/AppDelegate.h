#pragma once

#include "base/Lifetime.h"
#include "engine/MonitorEngine.h"
#include "platform/Platform.h"
#include "report/Periods.h"
#include "shell/AboutPanelController.h"
#include "shell/DashboardWindowController.h"
#include "shell/MenuBar.h"
#include "shell/PanelLabel.h"
#include "shell/QtApplication.h"
#include "shell/model/CrashReporter.h"
#include "shell/model/ExtensionOffer.h"
#include "shell/model/LaunchFlow.h"
#include "shell/model/LaunchSurfaces.h"
#include "shell/model/MenuBarVM.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

class DesktopLook;
class PermissionSetupWindow;

/// Ties the parts of the running program together: the recorder, the menu bar and the windows. Main
/// thread only; needs the application object.
class AppDelegate final : public LaunchSurfaces {
public:
    explicit AppDelegate(const Platform& platform);
    ~AppDelegate() override;

    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Begins the program's life.
    void launch();

    /// Shows the figures in the tray, after the launch. Waits for the tray's answer.
    void showMenuBar();

    /// The user started the program again; `startupId` is what the desktop told that launch.
    void reopen(const std::string& startupId);

    /// Ends the recording and notes the clean exit; again it changes nothing.
    void terminate() { flow.applicationWillTerminate(); }

    CrashReporter& reporter() { return crashReporter; }

    void showDashboard() override;
    void showPermissionSetup(bool isNewVersion, std::function<void()> onComplete) override;
    void closePermissionSetup() override;
    void patchAboutMenuItem() override;

private:
    void styleWindows();
    void perform(MenuAction action);
    void showAboutPanel();
    void showPage(std::optional<NavTab> tab);

    Platform platform;
    QtApplication application{platform.windowActivation, [this] { styleWindows(); }};
    CrashReporter crashReporter{platform};
    MonitorEngine engine{platform};
    LaunchFlow flow{platform,
        {.application = application,
            .surfaces = *this,
            .engine = engine,
            .crashReporter = crashReporter}};
    ExtensionOffer extensionOffer{platform, application};
    std::unique_ptr<DesktopLook> look{}; // made before the first window, as it costs memory
    DashboardWindowController dashboard{platform, application,
        [this](std::string_view page) { crashReporter.updateHeartbeat(page); },
        [this](MenuAction action) { perform(action); }};
    AboutPanelController aboutPanel{platform, application, [this] { perform(MenuAction::quit); }};
    std::unique_ptr<PermissionSetupWindow> permissionWindow{};
    std::unique_ptr<MenuBarVM> menuVM{};
    std::unique_ptr<MenuBar> menuBar{};
    std::unique_ptr<PanelLabel> panelLabel{};

    Lifetime lifetime{};
};

} // namespace quillbrook
