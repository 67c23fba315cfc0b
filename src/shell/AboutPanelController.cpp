#include "shell/AboutPanelController.h"

#include "pages/views/BundleAbout.h"
#include "platform/Application.h"
#include "shell/AboutPanelView.h"

#include <QAction>
#include <QGuiApplication>
#include <QKeySequence>
#include <QScreen>

#include <utility>

namespace quillbrook {

AboutPanelController::AboutPanelController(
    const Platform& platform, Application& application, std::function<void()> quit)
    : platform(platform)
    , application(application)
    , quit(std::move(quit))
{
}

AboutPanelController::~AboutPanelController() = default;

QWidget* AboutPanelController::shownWindow() const
{
    return aboutWindow.get();
}

void AboutPanelController::show()
{
    const bool isNew = !aboutWindow || !aboutWindow->isVisible();
    if (isNew) {
        makeWindow();
    }
    application.makeKey(aboutWindow->winId());
    if (isNew) {
        application.setActivationPolicy(ActivationPolicy::regular);
    }
    application.activate();
}

void AboutPanelController::makeWindow()
{
    aboutWindow = std::make_unique<AboutPanelView>(bundleAbout(platform));
    if (const QScreen* screen = QGuiApplication::primaryScreen(); screen != nullptr) {
        QRect place = aboutWindow->rect();
        place.moveCenter(screen->availableGeometry().center());
        aboutWindow->setGeometry(place);
    }
    auto* quitting = new QAction(aboutWindow.get());
    quitting->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    QObject::connect(quitting, &QAction::triggered, [this] { quit(); });
    aboutWindow->addAction(quitting);
    aboutWindow->show();
}

} // namespace quillbrook
