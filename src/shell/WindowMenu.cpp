#include "shell/WindowMenu.h"

#include <QKeySequence>

namespace quillbrook {

WindowMenu::WindowMenu(QWidget& window, const Actions& actions) : QMenuBar(&window)
{
    QMenu* menu = addMenu(QStringLiteral("Quillbrook"));
    const auto add = [&](const QString& title, const QKeySequence& shortcut,
                         const std::function<void()>& body) {
        QAction* entry = menu->addAction(title);
        entry->setShortcut(shortcut);
        connect(entry, &QAction::triggered, this, body);
        window.addAction(entry); // for its shortcut without the menu
    };
    add(QStringLiteral("关于 Quillbrook"), {}, actions.showAbout);
    menu->addSeparator();
    add(QStringLiteral("刷新数据"), QKeySequence(Qt::CTRL | Qt::Key_R), actions.refresh);
    add(QStringLiteral("关闭窗口"), QKeySequence(Qt::CTRL | Qt::Key_W),
        [&window] { window.close(); });
    menu->addSeparator();
    add(QStringLiteral("退出"), QKeySequence(Qt::CTRL | Qt::Key_Q), actions.quit);
}

} // namespace quillbrook
