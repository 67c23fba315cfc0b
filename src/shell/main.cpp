#include "platform/linux/BusConnecting.h"
#include "platform/linux/BusInstance.h"
#include "platform/linux/LinuxPlatform.h"
#include "shell/AppDelegate.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>

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

} // namespace

int main(int argc, char** argv)
{
    // A reader of our output that is gone must not end the recording.
    std::signal(SIGPIPE, SIG_IGN);

    quillbrook::hideSilentBuses();
    quillbrook::BusInstance instance;
    if (instance.handOver()) {
        return 0;
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillbrook"));
    QApplication::setDesktopFileName(QStringLiteral("cn.tarnlow.quillbrook"));
    QApplication::setQuitOnLastWindowClosed(false);

    quillbrook::LinuxPlatform platform([] {
        terminate();
        QApplication::quit();
    });
    quillbrook::AppDelegate delegate(platform.platform());
    runningDelegate = &delegate;
    QObject::connect(&application, &QApplication::aboutToQuit, &application, terminate);
    // When the display goes away under the program, it leaves through `exit`: open rows are
    // finished on that way too.
    std::atexit(terminate);

    delegate.launch();
    instance.onReopen([&delegate] { delegate.reopen(); });
    return QApplication::exec();
}
