#include "shell/PermissionSetupWindow.h"

#include "platform/Accessibility.h"
#include "platform/UserDefaults.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

PermissionSetupWindow::PermissionSetupWindow(
    const Platform& platform, std::function<void()> onComplete)
    : platform(platform)
    , onComplete(std::move(onComplete))
{
    setWindowTitle(QStringLiteral("Quillbrook 初始设置"));
    setFixedSize(500, 560);
    if (const QScreen* screen = QGuiApplication::primaryScreen(); screen != nullptr) {
        move(screen->availableGeometry().center() - rect().center());
    }

    const bool isGranted = platform.accessibility.isTrusted();
    auto* title = new QLabel(QStringLiteral("欢迎使用 Quillbrook"));
    title->setAlignment(Qt::AlignCenter);
    auto* privacy = new QLabel(QStringLiteral("所有击键数据仅存储在本地，绝不外传"));
    privacy->setAlignment(Qt::AlignCenter);
    auto* button = new QPushButton(isGranted ? QStringLiteral("开始使用 Quillbrook")
                                             : QStringLiteral("跳过（键盘监控不可用）"));
    button->setDefault(true);
    connect(button, &QPushButton::clicked, this, &PermissionSetupWindow::goOn);

    auto* layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(title);
    layout->addWidget(privacy);
    layout->addStretch();
    layout->addWidget(button, 0, Qt::AlignCenter);
    layout->addStretch();
}

void PermissionSetupWindow::goOn()
{
    platform.userDefaults.setBool("hasLaunchedBefore", true);
    // Once, however often the button is pressed until the window is gone.
    if (const auto complete = std::exchange(onComplete, nullptr)) {
        complete();
    }
}

} // namespace quillbrook
