#include <QApplication>
#include <QPlainTextEdit>

/// A window of Qt with the application id that is given as its argument.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QString::fromUtf8(argv[1]));
    QPlainTextEdit text;
    text.setWindowTitle(QString::fromUtf8(argv[1]));
    text.resize(400, 300);
    text.show();
    return QApplication::exec();
}
