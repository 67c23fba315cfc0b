#include "shell/QtApplication.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QDesktopServices>
#include <QList>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <QWidget>

namespace quillbrook {

namespace {

QList<QWidget*> visibleWindows()
{
    QList<QWidget*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const bool isWindow
            = widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog;
        if (isWindow && widget->isVisible() && !widget->isMinimized()) {
            windows.append(widget);
        }
    }
    return windows;
}

} // namespace

void QtApplication::setActivationPolicy(ActivationPolicy)
{
    // The desktop shows the program for as long as one of its windows is open.
}

void QtApplication::activate()
{
    for (QWidget* window : visibleWindows()) {
        window->raise();
        window->activateWindow();
    }
}

AlertAnswer QtApplication::runAlert(const Alert& alert)
{
    QMessageBox box(QMessageBox::Critical, QString(), toQString(alert.message));
    box.setInformativeText(toQString(alert.informativeText));
    const auto* first = box.addButton(toQString(alert.firstButton), QMessageBox::AcceptRole);
    box.addButton(toQString(alert.secondButton), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == first ? AlertAnswer::firstButton : AlertAnswer::secondButton;
}

void QtApplication::openApplicationsDirectory()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QStringLiteral("/Applications")));
}

bool QtApplication::hasVisibleWindows() const
{
    return !visibleWindows().isEmpty();
}

} // namespace quillbrook
