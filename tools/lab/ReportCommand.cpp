#include "lab/ReportCommand.h"

#include "base/WholeNumber.h"
#include "lab/Arguments.h"
#include "lab/PeriodOption.h"
#include "lab/RecordJson.h"
#include "lab/ZoneOption.h"
#include "platform/qt/SystemClock.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/DataProvider.h"

#include <cstdio>
#include <optional>

namespace quillbrook::lab {

namespace {

constexpr std::string_view kUsage
    = R"(usage: quillbrook-lab report --data DIR --tab TAB [--period LABEL] [--now T]
                            [--zone SECONDS] [--boot T|null]

Refreshes one page of the dashboard and prints the published record as a JSON object.

  --data DIR       the data directory
  --tab TAB        the page: Today, Past, Habit, Tokens, Alerts, 关于, Future, Sessions, Idles, Focus
  --period LABEL   one of the page's periods; default: the page's own
  --now T          the time, seconds since 1970; default: the real time
  --zone SECONDS   how far the computer's zone is ahead of UTC; default: 28800
  --boot T|null    when the kernel was booted, null when it can't be told; default: 0
)";

std::optional<std::int64_t> bootTime(const Arguments& arguments)
{
    if (arguments.option("--boot") == "null") {
        return std::nullopt;
    }
    return wholeNumber(arguments.number("--boot").value_or(0));
}

NavTab tabOf(const Arguments& arguments)
{
    const auto tab = fromRawValue<NavTab>(arguments.required("--tab"));
    if (!tab) {
        arguments.reject("--tab", "no such page");
    }
    return *tab;
}

} // namespace

int reportCommand(const std::vector<std::string>& texts)
{
    const Arguments arguments(
        {.usage = kUsage,
            .options = {"--data", "--tab", "--period", "--now", "--zone", "--boot"},
            .required = {"--data", "--tab"}},
        texts);
    const NavTab tab = tabOf(arguments);
    const double now = arguments.number("--now").value_or(SystemClock().now());

    VirtualMachine machine(arguments.required("--data"), now);
    machine.timeZone.setSecondsFromUtc(zoneSeconds(arguments));
    machine.kernelFigures.setBootTime(bootTime(arguments));
    DataProvider provider(machine.platform());
    machine.mainLoop.clear(); // the refresh that a provider begins with
    provider.selectedTab.set(tab);
    if (const auto label = periodOption(arguments, tab)) {
        choosePeriod(provider, tab, *label);
    }
    provider.refresh();
    machine.runFor(0);

    JsonObject record = recordJson(provider.data.get().value_or(DashboardData{}));
    if (tab == NavTab::habit) {
        record.addText("categoryTrend", trendJson(provider.categoryTrend.get()));
    }
    const QByteArray text = record.text() + "\n";
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    return 0;
}

} // namespace quillbrook::lab
