#include "engine/MonitorEngine.h"
#include "platform/linux/LinuxPlatform.h"
#include "shell/SingleInstance.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>

namespace {

/// The engine that runs, for the ways out of the process that pass `main` by.
quillbrook::MonitorEngine* runningEngine = nullptr;

void stopEngine()
{
    if (runningEngine != nullptr) {
        runningEngine->stop();
        runningEngine = nullptr;
    }
}

} // namespace

int main(int argc, char** argv)
{
    // A reader of our output that is gone must not end the recording.
    std::signal(SIGPIPE, SIG_IGN);

    const quillbrook::SingleInstance instance;
    if (instance.handOver()) {
        return 0;
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillbrook"));
    QApplication::setDesktopFileName(QStringLiteral("cn.tarnlow.quillbrook"));
    QApplication::setQuitOnLastWindowClosed(false);

    quillbrook::LinuxPlatform platform([] {
        stopEngine();
        QApplication::quit();
    });
    quillbrook::MonitorEngine engine(platform.platform());
    engine.start();
    runningEngine = &engine;
    QObject::connect(&application, &QApplication::aboutToQuit, &application, stopEngine);
    // When the display goes away under the program, it leaves through `exit`: open rows are
    // finished on that way too.
    std::atexit(stopEngine);

    return QApplication::exec();
}
