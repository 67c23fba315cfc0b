#include "lab/MenubarCommand.h"

#include "base/Text.h"
#include "lab/Arguments.h"
#include "lab/ChoiceOption.h"
#include "lab/JsonText.h"
#include "lab/ZoneOption.h"
#include "platform/qt/SystemClock.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/model/MenuBarVM.h"

#include <cstdio>

namespace quillbrook::lab {

namespace {

constexpr std::string_view kUsage
    = R"(usage: quillbrook-lab menubar --data DIR [--now T] [--zone SECONDS] [--trusted true|false]
                             [--login-item on|off]

Refreshes the menu bar's figures once and prints them with its menu as a JSON object.

  --data DIR          the data directory
  --now T             the time, seconds since 1970; default: the real time
  --zone SECONDS      how far the computer's zone is ahead of UTC; default: 28800
  --trusted BOOL      whether the permission to count keys is given; default: true
  --login-item STATE  whether the program starts at login; default: off
)";

QByteArray menuJson(const MenuBarVM& model)
{
    QByteArray list;
    for (const auto& entry : model.menu()) {
        list += (list.isEmpty() ? "" : ",") + (entry ? jsonText(entry->title) : "null");
    }
    return "[" + list + "]";
}

QByteArray numberJson(double value)
{
    return QByteArray::fromStdString(shortestText(value));
}

QByteArray integerJson(std::int64_t value)
{
    return QByteArray::number(static_cast<qlonglong>(value));
}

QByteArray modelJson(const MenuBarVM& model)
{
    return "{\"activeHoursStr\":" + jsonText(model.activeHoursStr.get())
        + ",\"alertCount\":" + integerJson(model.alertCount.get())
        + ",\"tokenCount\":" + integerJson(model.tokenCount.get())
        + ",\"tokenCountStr\":" + jsonText(model.tokenCountStr())
        + ",\"permissionMissing\":" + jsonBool(model.permissionMissing.get())
        + ",\"yearProgressPct\":" + numberJson(model.yearProgressPct.get()) + ",\"warning\":"
        + jsonBool(model.isWarning()) + ",\"fastTimer\":" + jsonBool(model.isFastRefreshing())
        + ",\"menu\":" + menuJson(model) + "}\n";
}

} // namespace

int menubarCommand(const std::vector<std::string>& texts)
{
    const Arguments arguments(
        {.usage = kUsage,
            .options = {"--data", "--now", "--zone", "--trusted", "--login-item"},
            .required = {"--data"}},
        texts);
    const double now = arguments.number("--now").value_or(SystemClock().now());
    const bool isTrusted = choiceOption(arguments, "--trusted", "true", "false", true);
    const bool startsAtLogin = choiceOption(arguments, "--login-item", "on", "off", false);

    VirtualMachine machine(arguments.required("--data"), now);
    machine.timeZone.setSecondsFromUtc(zoneSeconds(arguments));
    machine.accessibility.setTrusted(isTrusted);
    machine.loginItem.setEnabled(startsAtLogin);
    const MenuBarVM model(machine.platform());
    const QByteArray text = modelJson(model);
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    return 0;
}

} // namespace quillbrook::lab
