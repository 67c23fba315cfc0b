#include "platform/linux/LinuxPlatform.h"
#include "report/Periods.h"
#include "shell/DashboardWindowController.h"
#include "shell/DesktopLook.h"
#include "shell/QtApplication.h"

#include <QApplication>

/// Shows the dashboard on the page that the first argument names, also one to which nothing in the
/// program leads. Nothing is recorded.
int main(int argc, char** argv)
{
    using namespace quillbrook;

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillbrook"));
    const auto page = fromRawValue<NavTab>(argc == 2 ? argv[1] : "");
    if (!page) {
        return 2;
    }
    LinuxPlatform linuxPlatform([] { QApplication::quit(); });
    const Platform platform = linuxPlatform.platform();
    const DesktopLook look(platform.appearance);
    QtApplication windows(platform.windowActivation, [] {});
    DashboardWindowController dashboard(platform, windows, [](std::string_view) {});
    dashboard.show(*page);
    return QApplication::exec();
}
