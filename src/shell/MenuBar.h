#pragma once

#include "base/Lifetime.h"
#include "base/Property.h"
#include "platform/Platform.h"
#include "shell/model/MenuBarVM.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QObject>
#include <QString>
#include <QSystemTrayIcon>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace quillbrook {

/// The program's one always-visible face: today's active time in the tray, and its menu, on a click
/// of either button; on Wayland, where a program can't place a menu, the first opens the window.
/// Main thread only; needs the application object.
class MenuBar final : public QObject {
    Q_OBJECT

public:
    struct Handlers {
        std::function<void(MenuAction)> perform{}; ///< does what the entries of the menu promise
        std::function<void()> openWindow{}; ///< for a click where no menu can be shown
    };

    /// `model` and the parts of `platform` outlive the menu bar.
    MenuBar(MenuBarVM& model, const Platform& platform, Handlers handlers);

    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;

    /// Puts the icon into the tray, also into one that comes later. A notice says so when
    /// there is none now.
    void show();

    const QMenu& shownMenu() const { return menu; }
    const QString& toolTip() const { return tip; }
    const QIcon& shownIcon() const { return picture; }

private:
    void addActions();
    void showIcon();
    void clicked();
    void tellNoTray();
    void updateLabel();
    void updateMenu();

    MenuBarVM& model;
    Platform platform;
    Handlers handlers;
    QMenu menu{}; // outlives the icon, which shows it
    std::optional<QSystemTrayIcon> icon{};
    QIcon picture{};
    QString tip{};
    std::map<MenuAction, QAction*> actions{}; // owned by the menu
    QString drawnLabel{};
    bool isDrawnAsWarning = false;
    std::vector<Subscription> subscriptions{};
    Lifetime lifetime{};
};

} // namespace quillbrook
