#include "shell/QtApplication.h"

#include "platform/WindowActivation.h"
#include "platform/qt/QtText.h"
#include "shell/AppIcon.h"

#include <QApplication>
#include <QDesktopServices>
#include <QList>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <QWidget>

namespace quillbrook {

namespace {

/// What a person would call a window: a tray's icon and a menu stand outside of the window
/// manager.
bool isWindow(const QWidget& widget)
{
    const bool isOfItsKind = widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog;
    return isOfItsKind && !widget.windowFlags().testFlag(Qt::BypassWindowManagerHint);
}

QList<QWidget*> visibleWindows()
{
    QList<QWidget*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (isWindow(*widget) && widget->isVisible() && !widget->isMinimized()) {
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

void QtApplication::makeKey(std::uint64_t window)
{
    madeKey = QWidget::find(static_cast<WId>(window));
}

void QtApplication::activate()
{
    for (QWidget* window : visibleWindows()) {
        window->raise();
    }
    if (QWidget* key = keyWindow(); key != nullptr) {
        bring(*key);
    }
}

/// A box comes with the window below it, from another workspace, too.
void QtApplication::bring(QWidget& window)
{
    if (QWidget* parent = window.parentWidget(); parent != nullptr) {
        bring(*parent->window());
    }
    window.raise();
    if (!windowActivation.bring(window.winId(), startupId)) {
        window.activateWindow();
    }
}

std::shared_ptr<void> QtApplication::actFor(const std::string& newStartupId)
{
    startupId = newStartupId;
    return {nullptr, [this](void*) { startupId.clear(); }};
}

/// The window that the keys belong to: a box that waits for its answer before all others.
QWidget* QtApplication::keyWindow() const
{
    if (QWidget* box = QApplication::activeModalWidget(); box != nullptr) {
        return box;
    }
    if (madeKey && madeKey->isVisible()) {
        return madeKey;
    }
    const QList<QWidget*> windows = visibleWindows();
    return windows.isEmpty() ? nullptr : windows.last();
}

AlertAnswer QtApplication::runAlert(const Alert& alert)
{
    styleWindows();
    QMessageBox box(alert.isGrave ? QMessageBox::Critical : QMessageBox::Information, QString(),
        toQString(alert.message));
    box.setWindowIcon(appIcon());
    box.setInformativeText(toQString(alert.informativeText));
    const auto* first = box.addButton(toQString(alert.firstButton), QMessageBox::AcceptRole);
    if (!alert.secondButton.empty()) {
        box.addButton(toQString(alert.secondButton), QMessageBox::RejectRole);
    }
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
