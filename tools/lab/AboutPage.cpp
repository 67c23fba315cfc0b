#include "lab/AboutPage.h"

#include "base/BuildValues.h"
#include "lab/AccessibleText.h"
#include "lab/Arguments.h"
#include "lab/OffscreenQt.h"
#include "lab/ZoneOption.h"
#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/AboutPanelController.h"

#include <QApplication>
#include <QPixmap>
#include <QWidget>

namespace quillbrook::lab {

namespace {

/// What an option tells, nothing for "none", and `built` where it is missing.
std::optional<std::string> valueOf(
    const Arguments& arguments, std::string_view name, std::optional<std::string> built)
{
    const auto given = arguments.option(name);
    if (!given) {
        return built;
    }
    return *given == "none" ? std::nullopt : given;
}

} // namespace

void setBundleValues(const Arguments& arguments, VirtualBundleValues& bundleValues)
{
    if (const auto version = valueOf(arguments, "--version", std::string(buildVersion()))) {
        bundleValues.set("CFBundleShortVersionString", *version);
    }
    if (const auto date = valueOf(arguments, "--build-date", buildDate())) {
        bundleValues.set("BuildDate", *date);
    }
}

void rejectBundleValues(const Arguments& arguments)
{
    for (const char* name : {"--version", "--build-date"}) {
        if (arguments.option(name)) {
            arguments.reject(name, "only 关于 and AboutPanel tell it");
        }
    }
}

int aboutPanelPage(const Arguments& arguments)
{
    for (const char* name : {"--period", "--size", "--defaults", "--csv", "--search", "--pick",
             "--choose", "--trusted", "--reset"}) {
        if (arguments.option(name)) {
            arguments.reject(name, "AboutPanel has none");
        }
    }
    if (arguments.flag("--new-version")) {
        arguments.reject("--tab", "AboutPanel follows no update");
    }
    const int zone = zoneSeconds(arguments);
    const OffscreenQt qt(arguments);
    VirtualMachine machine(arguments.required("--data"), nowOf(arguments));
    machine.timeZone.setSecondsFromUtc(zone);
    setBundleValues(arguments, machine.bundleValues);
    VirtualApplication application;
    AboutPanelController controller(machine.platform(), application);
    controller.show();
    QApplication::processEvents();
    QWidget& panel = *controller.shownWindow();
    writePicture(arguments, panel.grab());
    writeText(arguments, "--text", accessibleText(panel));
    return 0;
}

} // namespace quillbrook::lab
