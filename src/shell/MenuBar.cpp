#include "shell/MenuBar.h"

#include "platform/Notices.h"
#include "platform/PanelItem.h"
#include "platform/qt/QtText.h"
#include "shell/MenuBarIcon.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeySequence>

#include <utility>

namespace quillbrook {

namespace {

/// Whether windows stand where the desktop wants them, menus beside a window of their program only.
bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

MenuBar::MenuBar(MenuBarVM& model, const Platform& platform, Handlers handlers)
    : model(model)
    , platform(platform)
    , handlers(std::move(handlers))
{
    addActions();
    updateMenu();
    updateLabel();
    const auto update = [this](const auto&) {
        updateMenu();
        updateLabel();
    };
    subscriptions.push_back(model.activeHoursStr.observe(update));
    subscriptions.push_back(model.alertCount.observe(update));
    subscriptions.push_back(model.tokenCount.observe(update));
    subscriptions.push_back(model.permissionMissing.observe(update));
    connect(&menu, &QMenu::aboutToShow, this, &MenuBar::updateMenu);
}

void MenuBar::show()
{
    if (!isOnWayland()) {
        if (!QSystemTrayIcon::isSystemTrayAvailable()) {
            tellNoTray();
        }
        showIcon(); // the X server's own way of a tray, too, and to one that comes later
        return;
    }
    // The toolkit looks for a tray once, when it is asked first: there has to be one by then.
    platform.panelItem.followTray([this, watch = lifetime.watch()](bool isThere) {
        if (watch.isOver() || icon) {
            return;
        }
        isThere ? showIcon() : tellNoTray();
    });
}

void MenuBar::tellNoTray()
{
    platform.notices.tell("没有托盘，不显示图标；再次启动程序就会打开窗口");
}

void MenuBar::showIcon()
{
    icon.emplace();
    icon->setContextMenu(&menu);
    connect(&*icon, &QSystemTrayIcon::activated, this,
        [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger) {
                clicked();
            }
        });
    icon->setIcon(picture);
    icon->setToolTip(tip);
    icon->show();
}

void MenuBar::clicked()
{
    if (isOnWayland()) {
        handlers.openWindow();
    } else {
        menu.popup(QCursor::pos());
    }
}

void MenuBar::addActions()
{
    const auto add = [this](MenuAction action, const QKeySequence& shortcut = {}) {
        QAction* entry = menu.addAction(QString());
        entry->setShortcut(shortcut);
        connect(entry, &QAction::triggered, this, [this, action] { handlers.perform(action); });
        actions.emplace(action, entry);
    };
    add(MenuAction::showAlerts);
    add(MenuAction::showToday);
    add(MenuAction::showKeylog);
    menu.addSeparator();
    add(MenuAction::refresh, QKeySequence(Qt::CTRL | Qt::Key_R));
    menu.addSeparator();
    add(MenuAction::toggleLoginItem);
    add(MenuAction::quit, QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void MenuBar::updateLabel()
{
    const QString label = toQString(model.activeHoursStr.get());
    const bool isWarning = model.isWarning();
    if (label == drawnLabel && isWarning == isDrawnAsWarning) {
        return;
    }
    drawnLabel = label;
    isDrawnAsWarning = isWarning;
    picture = menuBarIcon(label, isWarning);
    tip = (isWarning ? QStringLiteral("⚠ ") : QString()) + QStringLiteral("Quillbrook · 今日 ")
        + label;
    if (icon) {
        icon->setIcon(picture);
        icon->setToolTip(tip);
    }
}

void MenuBar::updateMenu()
{
    // Trays keep their own copy of the menu: the entries stay and only change.
    std::map<MenuAction, QString> titles;
    for (const auto& entry : model.menu()) {
        if (entry) {
            titles.emplace(entry->action, toQString(entry->title));
        }
    }
    for (const auto& [action, entry] : actions) {
        const auto title = titles.find(action);
        entry->setVisible(title != titles.end());
        if (title != titles.end()) {
            entry->setText(title->second);
        }
    }
}

} // namespace quillbrook
