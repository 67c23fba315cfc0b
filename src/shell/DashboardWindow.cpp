#include "shell/DashboardWindow.h"

#include "pages/kit/ScrollKeys.h"
#include "platform/UserDefaults.h"
#include "shell/WindowFrame.h"
#include "shell/model/StoredFrame.h"

#include <QAbstractScrollArea>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>

#include <chrono>
#include <optional>
#include <utility>

namespace quillbrook {

namespace {

// The number is part of the name: a frame of an older form is not used again.
constexpr std::string_view kFrameName = "DashboardWindow-v2";
constexpr QSize kFirstSize(960, 680);
constexpr QSize kSmallestSize(820, 560);
constexpr std::chrono::milliseconds kFrameRest(500);

/// Null when there is none.
QRect rectOf(const std::optional<StoredFrame>& frame)
{
    return frame ? QRect(frame->x, frame->y, frame->width, frame->height) : QRect();
}

} // namespace

DashboardWindow::DashboardWindow(
    QWidget* content, UserDefaults& userDefaults, std::function<void()> onClose)
    : userDefaults(userDefaults)
    , onClose(std::move(onClose))
{
    setWindowTitle("Quillbrook");
    setObjectName("dashboard");
    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(content);
    restoreFrame();
    frameTimer.setSingleShot(true);
    frameTimer.setInterval(kFrameRest);
    connect(&frameTimer, &QTimer::timeout, this, &DashboardWindow::saveFrame);
}

void DashboardWindow::restoreFrame()
{
    QRect frame = rectOf(storedFrame(userDefaults.stringForKey(kFrameName)));
    // A frame whose title bar lies on no screen could not be brought back by hand.
    const bool isReachable = QGuiApplication::screenAt(frame.center()) != nullptr
        && QGuiApplication::screenAt(frame.topLeft() + QPoint(40, 0)) != nullptr;
    if (!frame.isValid() || !isReachable) {
        frame = QRect(QPoint(), kFirstSize);
        frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    }
    const QScreen* screen = QGuiApplication::screenAt(frame.center());
    const QRect room = roomForWindow(
        (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry());
    setMinimumSize(kSmallestSize.boundedTo(room.size()));
    setGeometry(fittedInto(frame, room));
}

void DashboardWindow::saveFrame()
{
    if (!isVisible() || isMinimized() || isMaximized() || isFullScreen()) {
        return;
    }
    const QRect frame = geometry();
    userDefaults.setString(kFrameName,
        QString("%1 %2 %3 %4")
            .arg(frame.x())
            .arg(frame.y())
            .arg(frame.width())
            .arg(frame.height())
            .toStdString());
}

void DashboardWindow::keyPressEvent(QKeyEvent* event)
{
    // Nothing that has the focus wanted the key, so it is for what there is most of to scroll.
    QAbstractScrollArea* largest = nullptr;
    const auto surface = [](const QWidget& area) { return area.width() * area.height(); };
    for (auto* area : findChildren<QAbstractScrollArea*>()) {
        if (area->isVisible() && (largest == nullptr || surface(*area) > surface(*largest))) {
            largest = area;
        }
    }
    if (largest == nullptr || !scrollByKey(*largest, event->key())) {
        QWidget::keyPressEvent(event);
    }
}

void DashboardWindow::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    if (isVisible()) {
        frameTimer.start();
    }
}

void DashboardWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (isVisible()) {
        frameTimer.start();
    }
}

void DashboardWindow::closeEvent(QCloseEvent* event)
{
    frameTimer.stop();
    saveFrame();
    QWidget::closeEvent(event);
    onClose();
}

} // namespace quillbrook
