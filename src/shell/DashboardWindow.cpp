#include "shell/DashboardWindow.h"

#include "platform/UserDefaults.h"
#include "platform/qt/QtText.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QStringList>

#include <chrono>
#include <utility>

namespace quillbrook {

namespace {

// The number is part of the name: a frame of an older form is not used again.
constexpr std::string_view kFrameName = "DashboardWindow-v2";
constexpr QSize kFirstSize(960, 680);
constexpr QSize kSmallestSize(820, 560);
constexpr std::chrono::milliseconds kFrameRest(500);

/// The frame that a text such as "100 80 960 680" tells; null when it tells none.
QRect frameOf(const std::string& text)
{
    const QStringList parts = toQString(text).split(' ');
    if (parts.size() != 4) {
        return {};
    }
    return {parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt()};
}

} // namespace

DashboardWindow::DashboardWindow(
    QWidget* content, UserDefaults& userDefaults, std::function<void()> onClose)
    : userDefaults(userDefaults)
    , onClose(std::move(onClose))
{
    setWindowTitle("Quillbrook");
    setObjectName("dashboard");
    setMinimumSize(kSmallestSize);
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
    QRect frame = frameOf(userDefaults.stringForKey(kFrameName));
    // A frame whose title bar lies on no screen could not be brought back by hand.
    const bool isReachable = QGuiApplication::screenAt(frame.center()) != nullptr
        && QGuiApplication::screenAt(frame.topLeft() + QPoint(40, 0)) != nullptr;
    if (!frame.isValid() || !isReachable) {
        frame = QRect(QPoint(), kFirstSize);
        frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    }
    setGeometry(frame);
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
