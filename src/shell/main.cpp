#include "base/PrivateFiles.h"
#include "platform/linux/DisplayOpening.h"
#include "platform/linux/LinuxConfinement.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/bus/BusInstance.h"
#include "platform/linux/bus/SilentServices.h"
#include "platform/linux/surroundings/BaseDirectories.h"
#include "platform/linux/surroundings/OpenFiles.h"
#include "shell/AppDelegate.h"
#include "shell/AppIcon.h"

#include <QApplication>
#include <QSessionManager>

#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

/// The program that runs, for the ways out of the process that pass `main` by.
quillbrook::AppDelegate* runningDelegate = nullptr;

void terminate()
{
    if (runningDelegate != nullptr) {
        runningDelegate->terminate();
        runningDelegate = nullptr;
    }
}

/// The login item alone decides whether the program starts with a session: a session manager that
/// brings back what ran before would start it although the item is off.
void leaveStartingToTheLoginItem(QSessionManager& session)
{
    session.setRestartHint(QSessionManager::RestartNever);
}

} // namespace

int main(int argc, char** argv)
{
    quillbrook::makeFilesPrivate();
    // A reader of our output that is gone must not end the recording.
    std::signal(SIGPIPE, SIG_IGN);

    quillbrook::confineThisProcess();
    quillbrook::putDirectoriesRight();
    if (!quillbrook::mayOpenEnoughFiles()) {
        return EXIT_FAILURE;
    }
    quillbrook::confineWriting();
    quillbrook::hideSilentServices();
    quillbrook::BusInstance instance;
    if (instance.handOver()) {
        return 0;
    }

    quillbrook::preferNativeWindows();
    // The toolkit waits for whoever shows menus outside of windows, and the recorder with it.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    auto displayOpening = std::make_optional<quillbrook::DisplayOpening>();
    QApplication application(argc, argv);
    displayOpening.reset();
    QApplication::setApplicationName(QStringLiteral("Quillbrook"));
    QApplication::setDesktopFileName(QStringLiteral("cn.tarnlow.quillbrook"));
    QApplication::setQuitOnLastWindowClosed(false);

    for (const auto saving :
        {&QGuiApplication::saveStateRequest, &QGuiApplication::commitDataRequest}) {
        QObject::connect(
            &application, saving, &application, leaveStartingToTheLoginItem, Qt::DirectConnection);
    }

    quillbrook::LinuxPlatform platform([] {
        terminate();
        QApplication::quit();
    });
    platform.setIcon(quillbrook::appPicture());
    quillbrook::AppDelegate delegate(platform.platform());
    runningDelegate = &delegate;
    QObject::connect(&application, &QApplication::aboutToQuit, &application, terminate);
    // When the display goes away under the program, it leaves through `exit`: open rows are
    // finished on that way too.
    std::atexit(terminate);

    delegate.launch();
    platform.whenTrayAnswers([&delegate] { delegate.showMenuBar(); });
    platform.whenSessionBusIsThere([&instance] { instance.claim(); });
    instance.onReopen([&delegate](const std::string& startupId) { delegate.reopen(startupId); });
    return QApplication::exec();
}
