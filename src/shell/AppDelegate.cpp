#include "shell/AppDelegate.h"

#include "shell/AppIcon.h"
#include "shell/DesktopLook.h"
#include "shell/PermissionSetupWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>

#include <utility>

namespace quillbrook {

AppDelegate::AppDelegate(const Platform& platform) : platform(platform) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::launch()
{
    flow.applicationDidFinishLaunching();
    menuVM = std::make_unique<MenuBarVM>(platform);
    panelLabel = std::make_unique<PanelLabel>(
        *menuVM, platform.panelItem, [this](MenuAction action, const std::string& startupId) {
            const auto request = application.actFor(startupId);
            perform(action);
        });
}

void AppDelegate::showMenuBar()
{
    menuBar = std::make_unique<MenuBar>(*menuVM, platform,
        MenuBar::Handlers{.perform = [this](MenuAction action) { perform(action); },
            .openWindow = [this] { reopen({}); }});
    menuBar->show();
}

void AppDelegate::reopen(const std::string& startupId)
{
    const auto request = application.actFor(startupId);
    const bool hasWindows = application.hasVisibleWindows();
    if (flow.applicationShouldHandleReopen(hasWindows) && hasWindows) {
        application.activate();
    }
}

void AppDelegate::showPermissionSetup(bool isNewVersion, std::function<void()> onComplete)
{
    styleWindows();
    permissionWindow
        = std::make_unique<PermissionSetupWindow>(platform, isNewVersion, std::move(onComplete));
    permissionWindow->setWindowIcon(appIcon());
    auto* quit = new QAction(permissionWindow.get());
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    QObject::connect(quit, &QAction::triggered, [this] { perform(MenuAction::quit); });
    permissionWindow->addAction(quit);
    platform.appearance.whenKnown(lifetime.whileAlive([this] {
        if (permissionWindow) {
            permissionWindow->show();
            application.activate();
        }
    }));
}

void AppDelegate::showDashboard()
{
    showPage(std::nullopt);
    extensionOffer.begin();
}

void AppDelegate::closePermissionSetup()
{
    permissionWindow.reset();
}

void AppDelegate::patchAboutMenuItem()
{
    // Only where the system makes the application's menu does it have an item of its own.
}

void AppDelegate::styleWindows()
{
    if (!look) {
        look = std::make_unique<DesktopLook>(platform.appearance);
    }
}

void AppDelegate::showPage(std::optional<NavTab> tab)
{
    styleWindows();
    dashboard.show(tab);
}

void AppDelegate::showAboutPanel()
{
    styleWindows();
    aboutPanel.show();
}

void AppDelegate::perform(MenuAction action)
{
    switch (action) {
    case MenuAction::showAlerts:
        return showPage(NavTab::alerts);
    case MenuAction::showToday:
        return showPage(NavTab::today);
    case MenuAction::showKeylog:
        return showPage(NavTab::keylog);
    case MenuAction::refresh:
        return menuVM->refreshStats();
    case MenuAction::showAbout:
        return showAboutPanel();
    case MenuAction::toggleLoginItem:
        return menuVM->toggleLoginItem();
    case MenuAction::quit:
        return QCoreApplication::quit();
    }
}

} // namespace quillbrook
