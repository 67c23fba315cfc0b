#pragma once

#include "base/Property.h"
#include "shell/model/MenuBarVM.h"

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QString>
#include <QSystemTrayIcon>

#include <functional>
#include <map>
#include <vector>

namespace quillbrook {

class Notices;

/// The program's one always-visible face: today's active time in the tray, and its menu, on a click
/// of either button. Main thread only; needs the application object.
class MenuBar final : public QObject {
    Q_OBJECT

public:
    /// `perform` does what the entries of the menu promise. `model` and `notices` outlive the menu
    /// bar.
    MenuBar(MenuBarVM& model, Notices& notices, std::function<void(MenuAction)> perform);

    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;

    /// Puts the icon into the tray, also into one that comes later. A notice says so when
    /// there is none now.
    void show();

    /// Whether a tray is there to show the icon.
    static bool hasTray() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    const QMenu& shownMenu() const { return menu; }
    QString toolTip() const { return icon.toolTip(); }
    QIcon shownIcon() const { return icon.icon(); }

private:
    void addActions();
    void updateLabel();
    void updateMenu();

    MenuBarVM& model;
    Notices& notices;
    std::function<void(MenuAction)> perform;
    QMenu menu{}; // outlives the icon, which shows it
    QSystemTrayIcon icon{};
    std::map<MenuAction, QAction*> actions{}; // owned by the menu
    QString drawnLabel{};
    bool isDrawnAsWarning = false;
    std::vector<Subscription> subscriptions{};
};

} // namespace quillbrook
