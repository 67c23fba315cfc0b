#include "shell/model/MenuBarVM.h"

#include "base/IsoTime.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "base/WholeNumber.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/LocaleText.h"
#include "platform/LoginItem.h"
#include "platform/MainLoop.h"
#include "platform/TimeZone.h"
#include "platform/UserDefaults.h"
#include "shell/model/TodayStatements.h"

#include <chrono>
#include <cstdio>

namespace quillbrook {

namespace {

constexpr double kSlowRefreshSec = 300;
constexpr double kFastRefreshSec = 60;

std::string hoursText(std::int64_t seconds)
{
    return filled("{}h{}m", {std::to_string(seconds / 3600), std::to_string(seconds % 3600 / 60)});
}

} // namespace

MenuBarVM::MenuBarVM(const Platform& platform) : platform(platform)
{
    refreshStats();
    platform.mainLoop.repeatEvery(kSlowRefreshSec, lifetime.whileAlive([this] { refreshStats(); }));
}

void MenuBarVM::refreshStats()
{
    const auto [connection, result] = openConnection(dbPath().string(), SQLITE_OPEN_READONLY);
    if (result != SQLITE_OK) {
        return;
    }
    narrowToToday(connection.get());
    activeHoursStr.set(hoursText(wholeNumber(statsDouble(kActiveSecondsToday, connection.get()))));
    alertCount.set(wholeNumber(statsDouble(kAlertsToday, connection.get())));
    tokenCount.set(wholeNumber(statsDouble(tokensTodaySql(), connection.get())));
    updateYearProgress();
    permissionMissing.set(!platform.accessibility.isTrusted());
    adjustFastTimer();
}

void MenuBarVM::toggleLoginItem()
{
    LoginItem& item = platform.loginItem;
    const bool turnsOn = !item.isEnabled();
    if (const auto failure = turnsOn ? item.enable() : item.disable()) {
        const std::string line
            = filled("⚠️ 开机自启切换失败: {}\n", {validUtf8(failure->description)});
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fflush(stdout);
        return;
    }
    platform.userDefaults.setBool("loginItemRegistered", turnsOn);
}

std::string MenuBarVM::tokenCountStr() const
{
    return platform.localeText.groupedNumber(tokenCount.get());
}

bool MenuBarVM::isWarning() const
{
    return alertCount.get() >= 1 || permissionMissing.get();
}

std::vector<std::optional<MenuEntry>> MenuBarVM::menu() const
{
    std::vector<std::optional<MenuEntry>> entries;
    entries.emplace_back(MenuEntry{
        MenuAction::showAlerts, filled("Alerts：{}", {std::to_string(alertCount.get())})});
    entries.emplace_back(
        MenuEntry{MenuAction::showToday, filled("Hours：{}", {activeHoursStr.get()})});
    if (tokenCount.get() >= 1) {
        entries.emplace_back(
            MenuEntry{MenuAction::showKeylog, filled("Tokens：{}", {tokenCountStr()})});
    }
    entries.emplace_back();
    entries.emplace_back(MenuEntry{MenuAction::refresh, "刷新数据"});
    entries.emplace_back();
    entries.emplace_back(MenuEntry{MenuAction::toggleLoginItem,
        platform.loginItem.isEnabled() ? "开机自启：开" : "开机自启：关"});
    entries.emplace_back(MenuEntry{MenuAction::quit, "退出"});
    return entries;
}

double MenuBarVM::statsDouble(std::string_view sql, sqlite3* connection)
{
    const Statement statement = prepare(connection, sql);
    if (!statement || sqlite3_step(statement.get()) != SQLITE_ROW) {
        return 0;
    }
    return sqlite3_column_double(statement.get(), 0);
}

void MenuBarVM::updateYearProgress()
{
    using namespace std::chrono;
    const double now = platform.clock.now();
    const CivilTime today = civilTime(now, platform.timeZone.secondsFromUtc(now));
    const sys_days start{year{today.year} / January / 1};
    const sys_days end{year{today.year + 1} / January / 1};
    const sys_days day{
        year{today.year} / month{static_cast<unsigned>(today.month)} / static_cast<int>(today.day)};
    yearProgressPct.set(static_cast<double>((day - start).count() + 1)
        / static_cast<double>((end - start).count()));
}

void MenuBarVM::adjustFastTimer()
{
    if (!isWarning()) {
        fastRefreshTimer.reset();
    } else if (!fastRefreshTimer) {
        fastRefreshTimer.emplace();
        scheduleFastRefresh();
    }
}

void MenuBarVM::scheduleFastRefresh()
{
    platform.mainLoop.runAfter(
        kFastRefreshSec, fastRefreshTimer->whileAlive([this, run = fastRefreshTimer->watch()] {
            refreshStats();
            if (!run.isOver()) {
                scheduleFastRefresh();
            }
        }));
}

const std::filesystem::path& MenuBarVM::dbPath()
{
    if (!path) {
        path = storePath(platform.directories.dataDirectory().value_or("/dev/null"));
    }
    return *path;
}

} // namespace quillbrook
