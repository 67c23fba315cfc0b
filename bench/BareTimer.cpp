#include <QApplication>
#include <QTimer>

/// The floor under a program that is at rest on a desktop: Qt and one timer of a second.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(1000);
    return QApplication::exec();
}
