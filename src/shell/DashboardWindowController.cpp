#include "shell/DashboardWindowController.h"

#include "platform/IdleMemory.h"
#include "platform/MainLoop.h"
#include "report/DataProvider.h"
#include "shell/AppIcon.h"
#include "shell/ContentView.h"
#include "shell/DashboardWindow.h"
#include "shell/WindowMenu.h"

#include <QApplication>
#include <QLayout>

#include <utility>

namespace quillbrook {

DashboardWindowController::DashboardWindowController(
    const Platform& platform, Application& application, Heartbeat updateHeartbeat, Perform perform)
    : platform(platform)
    , application(application)
    , updateHeartbeat(std::move(updateHeartbeat))
    , perform(std::move(perform))
{
}

DashboardWindowController::~DashboardWindowController() = default;

QWidget* DashboardWindowController::shownWindow() const
{
    return window.get();
}

void DashboardWindowController::show(std::optional<NavTab> tab)
{
    postPolicy(ActivationPolicy::regular);
    setIconOnce();
    if (!window) {
        makeWindow();
    }
    // Behind the making of the window, so that the first page loads like any later one.
    if (tab) {
        contentProvider->selectedTab.set(*tab);
    }
    if (window->isMinimized()) {
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    }
    window->show();
    application.makeKey(window->winId());
    application.activate();
}

void DashboardWindowController::postPolicy(ActivationPolicy policy)
{
    platform.mainLoop.post(
        [&application = application, policy] { application.setActivationPolicy(policy); });
}

void DashboardWindowController::setIconOnce()
{
    if (isIconSet) {
        return;
    }
    isIconSet = true;
    QApplication::setWindowIcon(appIcon());
}

void DashboardWindowController::makeWindow()
{
    contentProvider = std::make_unique<DataProvider>(platform);
    auto* content = new ContentView(*contentProvider, platform, updateHeartbeat);
    window = std::make_unique<DashboardWindow>(content, platform.userDefaults, [this] {
        postPolicy(ActivationPolicy::accessory);
        platform.mainLoop.post([&memory = platform.idleMemory] { memory.giveBack(); });
    });
    addMenu();
}

void DashboardWindowController::addMenu()
{
    auto* menu = new WindowMenu(*window,
        {.showAbout = [this] { perform(MenuAction::showAbout); },
            .refresh =
                [this] {
                    perform(MenuAction::refresh);
                    contentProvider->refresh();
                },
            .quit = [this] { perform(MenuAction::quit); }});
    window->layout()->setMenuBar(menu);
}

} // namespace quillbrook
