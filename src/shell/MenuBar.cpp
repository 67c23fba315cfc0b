#include "shell/MenuBar.h"

#include "platform/Notices.h"
#include "platform/qt/QtText.h"
#include "shell/MenuBarIcon.h"

#include <QCursor>
#include <QKeySequence>

#include <utility>

namespace quillbrook {

MenuBar::MenuBar(MenuBarVM& model, Notices& notices, std::function<void(MenuAction)> perform)
    : model(model)
    , notices(notices)
    , perform(std::move(perform))
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
    icon.setContextMenu(&menu);
    connect(
        &icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger) {
                menu.popup(QCursor::pos());
            }
        });
}

void MenuBar::show()
{
    if (!hasTray()) {
        notices.tell("no tray for the menu; starting the program again opens its window");
    }
    icon.show();
}

void MenuBar::addActions()
{
    const auto add = [this](MenuAction action, const QKeySequence& shortcut = {}) {
        QAction* entry = menu.addAction(QString());
        entry->setShortcut(shortcut);
        connect(entry, &QAction::triggered, this, [this, action] { perform(action); });
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
    icon.setIcon(menuBarIcon(label, isWarning));
    const QString tip = QStringLiteral("Quillbrook · 今日 ") + label;
    icon.setToolTip(isWarning ? QStringLiteral("⚠ ") + tip : tip);
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
