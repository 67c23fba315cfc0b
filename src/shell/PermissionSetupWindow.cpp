#include "shell/PermissionSetupWindow.h"

#include "pages/views/PermissionSetupView.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr QSize kSize(500, 560);

} // namespace

PermissionSetupWindow::PermissionSetupWindow(
    const Platform& platform, bool isNewVersion, std::function<void()> onComplete)
{
    setWindowTitle(QStringLiteral("Quillbrook 初始设置"));
    setFixedSize(kSize);
    if (const QScreen* screen = QGuiApplication::primaryScreen(); screen != nullptr) {
        move(screen->availableGeometry().center() - rect().center());
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PermissionSetupView(platform, isNewVersion, std::move(onComplete)));
}

} // namespace quillbrook
