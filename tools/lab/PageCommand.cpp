#include "lab/PageCommand.h"

#include "lab/AboutPage.h"
#include "lab/AccessibleText.h"
#include "lab/Arguments.h"
#include "lab/CategoriesPage.h"
#include "lab/OffscreenQt.h"
#include "lab/PeriodOption.h"
#include "lab/SetupPage.h"
#include "lab/ZoneOption.h"
#include "pages/figures/TimelineFigures.h"
#include "platform/qt/QtText.h"
#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/DataProvider.h"
#include "shell/DashboardWindowController.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScrollBar>

#include <algorithm>
#include <charconv>
#include <optional>

namespace quillbrook::lab {

namespace {

constexpr std::string_view kUsage
    = R"(usage: quillbrook-lab page --data DIR --tab TAB [--period LABEL] [--now T] [--zone SECONDS]
                           [--size WxH] [--scale F] [--dark] [--full] [--defaults FILE]
                           [--version V|none] [--build-date D|none]
                           [--png FILE] [--text FILE] [--csv FILE]
       quillbrook-lab page --data DIR --tab Categories [--search TEXT] [--pick NAME [--choose LABEL]]
                           [--now T] [--scale F] [--dark] [--png FILE] [--text FILE]
       quillbrook-lab page --data DIR --tab Setup [--trusted true|false] [--new-version]
                           [--reset ok|failed] [--scale F] [--dark] [--png FILE] [--text FILE]
       quillbrook-lab page --data DIR --tab AboutPanel [--version V|none] [--build-date D|none]
                           [--now T] [--scale F] [--dark] [--png FILE] [--text FILE]

Opens the dashboard off screen on a page, waits for its data, and writes what is to be seen.

  --data DIR       the data directory
  --tab TAB        the page, by its title: Today, Past, ...
  --period LABEL   the page's period, by its label (default: the first that users see)
  --now T          the time, in seconds since 1970 (default: the real one)
  --zone SECONDS   the computer's offset from UTC (default 28800)
  --size WxH       the window's size in points (default 960x680)
  --scale F        the screen's device pixel ratio (default 1)
  --dark           the dark appearance
  --full           grows the window until nothing scrolls
  --defaults FILE  user defaults, a JSON object
  --png FILE       receives a picture of the window
  --text FILE      receives what a screen reader finds, a JSON line for each element
  --csv FILE       receives the timeline as CSV; with Today only

Categories is the sheet over Habit in which applications get their categories, in its own size.

  --search TEXT    types it into the search field
  --pick NAME      presses the first entry of that name
  --choose LABEL   presses that category, or 恢复系统默认

Setup is the window before the first recording, in its own size.

  --trusted BOOL   whether the permission to count keys is there (default: true)
  --new-version    the launch follows an update
  --reset RESULT   presses the reset button, with the reset tool and the administrator's way both
                   working (ok) or both failing (failed)

AboutPanel is the small window about the program, in its own size. It and 关于 take

  --version V      what the package says, or none (default: what was built)
  --build-date D   the same; without a date it is that of --now
)";

const Syntax kSyntax{.usage = kUsage,
    .options = {"--data", "--tab", "--period", "--now", "--zone", "--size", "--scale", "--defaults",
        "--png", "--text", "--csv", "--search", "--pick", "--choose", "--trusted", "--reset",
        "--version", "--build-date"},
    .flags = {"--dark", "--full", "--new-version"},
    .required = {"--data", "--tab"}};

constexpr QSize kDefaultSize(960, 680);

/// What the command line asks for, checked.
struct Request {
    NavTab tab = NavTab::today;
    std::optional<std::string> period{};
    double now = 0;
    int zone = 0; // seconds ahead of UTC
    QSize size = kDefaultSize;
    QJsonObject defaults{};
};

std::optional<QSize> sizeOf(std::string_view text)
{
    const auto cross = text.find('x');
    if (cross == std::string_view::npos) {
        return std::nullopt;
    }
    const auto side = [](std::string_view digits) {
        int value = 0;
        const auto* end = digits.data() + digits.size();
        const auto result = std::from_chars(digits.data(), end, value);
        return result.ec == std::errc() && result.ptr == end && value < 20000 ? value : 0;
    };
    const QSize size(side(text.substr(0, cross)), side(text.substr(cross + 1)));
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

QJsonObject defaultsOf(const Arguments& arguments)
{
    const auto path = arguments.option("--defaults");
    if (!path) {
        return {};
    }
    QFile file(QString::fromStdString(*path));
    if (!file.open(QIODevice::ReadOnly)) {
        arguments.reject("--defaults", "'" + *path + "' can't be read");
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject()) {
        usageError(*path, 1, "no JSON object");
    }
    return document.object();
}

Request requestOf(const Arguments& arguments)
{
    Request request;
    const auto tab = fromRawValue<NavTab>(arguments.required("--tab"));
    if (!tab) {
        arguments.reject("--tab", "there is no page '" + arguments.required("--tab") + "'");
    }
    request.tab = *tab;
    request.period = periodOption(arguments, request.tab);
    if (arguments.option("--csv") && request.tab != NavTab::today) {
        arguments.reject("--csv", "only Today has a timeline");
    }
    if (const auto text = arguments.option("--size")) {
        const auto size = sizeOf(*text);
        if (!size) {
            arguments.reject("--size", "'" + *text + "' is no size such as 960x680");
        }
        request.size = *size;
    }
    for (const char* name : {"--search", "--pick", "--choose"}) {
        if (arguments.option(name)) {
            arguments.reject(name, "only Categories lists applications");
        }
    }
    for (const char* name : {"--trusted", "--reset"}) {
        if (arguments.option(name)) {
            arguments.reject(name, "only Setup asks for the permission");
        }
    }
    if (arguments.flag("--new-version")) {
        arguments.reject("--tab", "only Setup follows an update");
    }
    request.now = nowOf(arguments);
    request.zone = zoneSeconds(arguments);
    request.defaults = defaultsOf(arguments);
    return request;
}

void setDefaults(VirtualUserDefaults& userDefaults, const QJsonObject& values)
{
    for (const QString& name : values.keys()) {
        const QJsonValue value = values[name];
        if (value.isBool()) {
            userDefaults.set(name.toStdString(), value.toBool());
        } else if (value.isDouble()) {
            userDefaults.set(name.toStdString(), value.toDouble());
        } else if (value.isString()) {
            userDefaults.set(name.toStdString(), value.toString().toStdString());
        }
    }
}

/// Runs what is due now on both loops until the page is there and laid out.
void settle(VirtualMachine& machine)
{
    for (int round = 0; round < 3; ++round) {
        machine.runFor(0);
        QApplication::processEvents();
    }
}

/// By how much the window must grow for nothing to scroll.
int hiddenHeight(const QWidget& window)
{
    int hidden = 0;
    for (const auto* area : window.findChildren<QAbstractScrollArea*>()) {
        if (area->isVisible()) {
            hidden = std::max(hidden, area->verticalScrollBar()->maximum());
        }
    }
    return hidden;
}

/// Writes the files that were asked for. Ends the program when one can't be written.
void writeResults(const Arguments& arguments, QWidget& window, const DataProvider& provider)
{
    writePicture(arguments, window.grab());
    writeText(arguments, "--text", accessibleText(window));
    const auto& data = provider.data.get();
    const auto timeline = data ? data->hourlyTimeline : std::vector<HourlyTimelineEntry>();
    writeText(arguments, "--csv", QByteArray::fromStdString(generateCSV(timeline)));
}

} // namespace

int pageCommand(const std::vector<std::string>& texts)
{
    const Arguments arguments(kSyntax, texts);
    const std::string& tab = arguments.required("--tab");
    if (tab == "AboutPanel") {
        return aboutPanelPage(arguments);
    }
    if (tab != rawValue(NavTab::about)) {
        rejectBundleValues(arguments);
    }
    if (tab == "Categories") {
        return categoriesPage(arguments);
    }
    if (tab == "Setup") {
        return setupPage(arguments);
    }
    const Request request = requestOf(arguments);

    const OffscreenQt qt(arguments);
    VirtualMachine machine(arguments.required("--data"), request.now);
    machine.timeZone.setSecondsFromUtc(request.zone);
    setDefaults(machine.userDefaults, request.defaults);
    setBundleValues(arguments, machine.bundleValues);
    VirtualApplication application;
    DashboardWindowController controller(machine.platform(), application, [](std::string_view) {});
    controller.show(request.tab);
    DataProvider& provider = *controller.provider();
    settle(machine);
    if (request.period) {
        choosePeriod(provider, request.tab, *request.period);
    }
    QWidget& window = *controller.shownWindow();
    window.resize(request.size);
    settle(machine);
    for (int round = 0; arguments.flag("--full") && round < 4 && hiddenHeight(window) > 0;
         ++round) {
        window.resize(window.width(), window.height() + hiddenHeight(window));
        settle(machine);
    }
    writeResults(arguments, window, provider);
    return 0;
}

} // namespace quillbrook::lab
