#include "base/Sqlite.h"
#include "base/Utc8Day.h"
#include "base/WholeNumber.h"
#include "categories/CategoryStore.h"
#include "platform/Clock.h"
#include "platform/TimeZone.h"
#include "report/AlertReports.h"
#include "report/CategoryReports.h"
#include "report/DataProvider.h"
#include "report/KeystrokeReports.h"
#include "report/NarrowedTable.h"
#include "report/PeriodFilters.h"
#include "report/SessionReports.h"
#include "report/StoreQuery.h"
#include "report/UsageQueries.h"

namespace quillbrook {

namespace {

void readKeystrokes(
    DashboardData& data, sqlite3* db, const std::string& filter, std::int64_t tzOffsetSec)
{
    KeystrokeData keys;
    {
        const NarrowedTable sound(db, "keystrokes", soundKeystrokes(db));
        keys = queryKeystrokeData(db, filter, tzOffsetSec);
    }
    data.keylogHourly = std::move(keys.hours);
    data.totalKeylogKeystrokes = keys.totalKeystrokes;
    data.totalKeylogTokens = keys.totalTokens;
    const NarrowedTable sound(db, "keystrokes", soundTimes(db, "keystrokes", "timestamp"));
    data.totalActiveKeylogMinutes = queryActiveKeylogMinutes(db, filter, tzOffsetSec);
    if (data.totalActiveKeylogMinutes >= 1) {
        data.tpm = data.totalKeylogTokens / static_cast<double>(data.totalActiveKeylogMinutes);
    }
}

void readToday(
    DashboardData& data, sqlite3* db, const Platform& platform, const RefreshContext& ctx)
{
    const RuleSet rules = CategoryStore::loadRuleSet(db);
    const std::string filter = dateFilter(ctx.todayPeriod);
    const std::int64_t today = wholeNumber(bjTodayStartUTC(platform.clock.now()));
    const NarrowedTable sound(db, "app_sessions", soundSessions(db));
    data.appUsage = queryAppUsage(db, filter, rules);
    data.overview = queryTodayOverview(db, filter, platform.kernelFigures);
    data.hourlyTimeline = queryHourlyTimeline(
        db, ctx.todayPeriod == TodayPeriod::yesterday ? today - 86400 : today);
    // This page keeps to the day of UTC+8, other than the page of keys.
    readKeystrokes(data, db, keystrokeFilter(ctx.todayPeriod), kUtc8OffsetSec);
}

void readHistory(DashboardData& data, sqlite3* db, const RefreshContext& ctx)
{
    const RuleSet rules = CategoryStore::loadRuleSet(db);
    const std::string filter = dateFilter(ctx.historyPeriod);
    const NarrowedTable sessions(db, "app_sessions", soundSessions(db));
    const NarrowedTable boots(db, "boot_events", "timestamp * 0 = 0 AND boot_time * 0 = 0");
    data.appUsage = queryAppUsage(db, filter, rules);
    data.historyOverview = queryHistoryOverview(db, filter);
}

void readHabit(DashboardData& data, sqlite3* db, const RefreshContext& ctx)
{
    const RuleSet rules = CategoryStore::loadRuleSet(db);
    CategoryData categories = queryCategoryData(db, dateFilter(ctx.habitPeriod), rules);
    data.categoryUsage = std::move(categories.usage);
    data.categorySessions = std::move(categories.sessions);
    data.totalActiveSeconds = categories.totalSeconds;
}

void readKeylog(
    DashboardData& data, sqlite3* db, const Platform& platform, const RefreshContext& ctx)
{
    const int zoneSeconds = platform.timeZone.secondsFromUtc(platform.clock.now());
    readKeystrokes(data, db, dateFilter(ctx.keylogPeriod, zoneSeconds), zoneSeconds);
}

void readFocus(
    DashboardData& data, sqlite3* db, const Platform& platform, const RefreshContext& ctx)
{
    {
        const NarrowedTable sound(db, "app_sessions", soundLongSessions(db));
        data.focusHours = queryFocusHours(db, ctx.focusPeriod, platform.clock.now());
        data.durationBuckets = queryDurationBuckets(db, ctx.focusPeriod);
    }
    data.dailyAvgSessions = queryDailyAvgSessions(db);
}

void readAlerts(DashboardData& data, sqlite3* db, const RefreshContext& ctx)
{
    const NarrowedTable sound(db, "alerts", soundTimes(db, "alerts", "timestamp"));
    data.alerts = queryAlerts(db, alertDays(ctx.alertsPeriod));
    data.alertCount = queryTodayAlertCount(db);
}

void readSessions(
    DashboardData& data, sqlite3* db, const Platform& platform, const RefreshContext& ctx)
{
    const NarrowedTable sound(db, "app_sessions", soundTimes(db, "app_sessions", "started_at"));
    data.recentSessions
        = queryRecentSessions(db, dateFilter(ctx.sessionsPeriod, platform.clock.now()));
}

void readIdles(
    DashboardData& data, sqlite3* db, const Platform& platform, const RefreshContext& ctx)
{
    const NarrowedTable sound(db, "idle_periods", soundTimes(db, "idle_periods", "started_at"));
    data.recentIdles = queryRecentIdles(db, dateFilter(ctx.idlesPeriod, platform.clock.now()));
}

} // namespace

DashboardData performRefreshSync(
    const Platform& platform, const std::string& dbPath, const RefreshContext& ctx)
{
    DashboardData data;
    const OpenedConnection opened = openConnection(dbPath, kReaderFlags);
    if (opened.result != SQLITE_OK || !opened.connection) {
        return data;
    }
    sqlite3* db = opened.connection.get();
    switch (ctx.tab) {
    case NavTab::today:
        readToday(data, db, platform, ctx);
        break;
    case NavTab::history:
        readHistory(data, db, ctx);
        break;
    case NavTab::habit:
        readHabit(data, db, ctx);
        break;
    case NavTab::keylog:
        readKeylog(data, db, platform, ctx);
        break;
    case NavTab::alerts:
        readAlerts(data, db, ctx);
        break;
    case NavTab::session:
        readSessions(data, db, platform, ctx);
        break;
    case NavTab::idles:
        readIdles(data, db, platform, ctx);
        break;
    case NavTab::focus:
        readFocus(data, db, platform, ctx);
        break;
    case NavTab::about:
    case NavTab::life:
        break;
    }
    return data;
}

} // namespace quillbrook
