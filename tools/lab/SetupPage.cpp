#include "lab/SetupPage.h"

#include "lab/AccessibleText.h"
#include "lab/Arguments.h"
#include "lab/ChoiceOption.h"
#include "lab/OffscreenQt.h"
#include "pages/kit/BorderedButton.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/PermissionSetupWindow.h"

#include <QPixmap>

namespace quillbrook::lab {

namespace {

/// Presses the reset button, with tools that work or fail. Ends the program when there is none.
void reset(const Arguments& arguments, VirtualMachine& machine, const QWidget& window)
{
    constexpr int kFailure = 1;
    const bool works = choiceOption(arguments, "--reset", "ok", "failed", true);
    for (const char* tool : {"/usr/bin/tccutil", "/usr/bin/osascript"}) {
        machine.childProcess.install(tool, {.exitStatus = works ? 0 : kFailure});
    }
    for (auto* button : window.findChildren<BorderedButton*>()) {
        if (button->text() == "重置旧授权") {
            button->click();
            return;
        }
    }
    arguments.reject(
        "--reset", "there is no reset button without --new-version and the permission");
}

} // namespace

int setupPage(const Arguments& arguments)
{
    for (const char* name :
        {"--period", "--size", "--defaults", "--csv", "--search", "--pick", "--choose"}) {
        if (arguments.option(name)) {
            arguments.reject(name, "Setup has none");
        }
    }
    const bool isTrusted = choiceOption(arguments, "--trusted", "true", "false", true);
    const OffscreenQt qt(arguments);
    VirtualMachine machine(arguments.required("--data"), nowOf(arguments));
    machine.accessibility.setTrusted(isTrusted);
    PermissionSetupWindow window(machine.platform(), arguments.flag("--new-version"), [] {});
    window.show();
    if (arguments.option("--reset")) {
        reset(arguments, machine, window);
    }
    QApplication::processEvents();
    writePicture(arguments, window.grab());
    writeText(arguments, "--text", accessibleText(window));
    return 0;
}

} // namespace quillbrook::lab
