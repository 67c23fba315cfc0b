#include "base/Sqlite.h"
#include "base/Text.h"
#include "categories/CategoryStore.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/CategoryReports.h"
#include "report/DataProvider.h"
#include "report/SessionReports.h"
#include "report/StoreQuery.h"
#include "tests/fuzz/FuzzInput.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {
namespace {

constexpr double kNow = 1767268800; // 2026-01-01T20:00:00+08:00

constexpr auto kKnownTexts = std::to_array<std::string_view>(
    {"", "loginwindow", "MyLoginTool", "unknown", "com.apple.Safari", "us.zoom.xos", "english",
        "shuangpin", "quanpin", "other", "user", "system", "exact", "bundle_prefix", "now"});

constexpr auto kInserts = std::to_array<const char*>({
    "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
    "close_type) VALUES (?, ?, ?, ?, ?, ?)",
    "INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type) "
    "VALUES (?, ?, ?, ?)",
    "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
    "VALUES (?, ?, ?, ?)",
    "INSERT INTO alerts (timestamp, alert_type, severity, message) VALUES (?, ?, ?, ?)",
    "INSERT INTO boot_events (timestamp, boot_time) VALUES (?, ?)",
    "INSERT INTO categories (id, key, label, color) VALUES (?, ?, ?, ?)",
    "INSERT INTO app_categories (match_key, match_type, category_id, source) VALUES (?, ?, ?, ?)",
});

constexpr const char* kTablesWithoutTypes = R"(
    CREATE TABLE app_sessions (id INTEGER PRIMARY KEY, app_name, bundle_id, started_at, ended_at,
        duration_sec, close_type);
    CREATE TABLE idle_periods (id INTEGER PRIMARY KEY, started_at, ended_at, duration_sec,
        source_type);
    CREATE TABLE keystrokes (id INTEGER PRIMARY KEY, timestamp, app_name, input_method,
        keystroke_count);
    CREATE TABLE alerts (id INTEGER PRIMARY KEY, timestamp, alert_type, severity, message);
    CREATE TABLE boot_events (id INTEGER PRIMARY KEY, timestamp, boot_time);
    CREATE TABLE categories (id, key, label, color);
    CREATE TABLE app_categories (id INTEGER PRIMARY KEY, match_key, match_type, category_id,
        source))";

constexpr const char* kEmptyAll = R"(
    DELETE FROM app_sessions; DELETE FROM idle_periods; DELETE FROM keystrokes; DELETE FROM alerts;
    DELETE FROM boot_events; DELETE FROM categories WHERE id > 13;
    DELETE FROM app_categories WHERE id > 113)";

/// Stores in memory: one as the engine makes it, and one whose columns take every type as it comes.
class Stores {
public:
    Stores()
    {
        MonitorLog log(machine.platform().clock);
        MonitorStore store(machine.platform(), log);
        require(store.dbOpen(path(true)));
        typed = openConnection(path(true), SQLITE_OPEN_READWRITE).connection;
        store.dbCreateTables();
        untyped
            = openConnection(path(false), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE).connection;
        run(untyped, kTablesWithoutTypes);
    }

    static std::string path(bool isTyped) { return isTyped ? "/typed.db" : "/untyped.db"; }

    /// Replaces all rows by those of the input.
    void fill(bool isTyped, FuzzInput& input)
    {
        const Connection& store = isTyped ? typed : untyped;
        run(store, "BEGIN");
        run(store, kEmptyAll);
        for (int row = 0; row < 60 && !input.isEmpty(); ++row) {
            const Statement insert = prepare(store.get(), kInserts[input.byte() % kInserts.size()]);
            for (int i = 1; i <= sqlite3_bind_parameter_count(insert.get()); ++i) {
                bindValue(insert, i, input);
            }
            sqlite3_step(insert.get()); // what the columns refuse stays out
        }
        run(store, "COMMIT");
    }

    VirtualMachine machine{"/", kNow};

private:
    static void run(const Connection& store, const char* sql)
    {
        require(sqlite3_exec(store.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK);
    }

    static void bindText(const Statement& insert, int at, std::string_view text)
    {
        sqlite3_bind_text(insert.get(), at, text.data() == nullptr ? "" : text.data(),
            static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }

    static void bindValue(const Statement& insert, int at, FuzzInput& input)
    {
        switch (input.byte() % 8) {
        case 0:
            sqlite3_bind_null(insert.get(), at);
            break;
        case 1:
            sqlite3_bind_int64(insert.get(), at, input.number<std::int64_t>());
            break;
        case 2:
            sqlite3_bind_int64(insert.get(), at, input.byte());
            break;
        case 3:
            sqlite3_bind_double(insert.get(), at, input.number<double>());
            break;
        case 4:
            sqlite3_bind_double(insert.get(), at, kNow + input.number<std::int32_t>() / 256.0);
            break;
        case 5:
            bindText(insert, at, input.take(input.byte() % 32));
            break;
        case 6: {
            const std::string_view bytes = input.take(input.byte() % 32);
            sqlite3_bind_blob(
                insert.get(), at, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
            break;
        }
        default:
            bindText(insert, at, kKnownTexts[input.byte() % kKnownTexts.size()]);
            break;
        }
    }

    Connection typed{};
    Connection untyped{};
};

Stores& stores()
{
    // Left standing at the end: SQLite's memory VFS is its default from here on.
    static Stores* const made = [] {
        sqlite3_initialize();
        require(sqlite3_vfs_register(sqlite3_vfs_find("memdb"), 1) == SQLITE_OK);
        return new Stores();
    }();
    return *made;
}

template <typename T>
T anyOf(FuzzInput& input)
{
    return allCases<T>[input.byte() % allCases<T>.size()].value;
}

RefreshContext anyContext(FuzzInput& input)
{
    return {.tab = anyOf<NavTab>(input),
        .todayPeriod = anyOf<TodayPeriod>(input),
        .keylogPeriod = anyOf<KeylogPeriod>(input),
        .historyPeriod = anyOf<HistoryPeriod>(input),
        .habitPeriod = anyOf<HabitPeriod>(input),
        .sessionsPeriod = anyOf<SessionsPeriod>(input),
        .idlesPeriod = anyOf<IdlesPeriod>(input),
        .alertsPeriod = anyOf<AlertsPeriod>(input),
        .focusPeriod = anyOf<FocusPeriod>(input)};
}

void checkText(const std::string& text)
{
    require(isValidUtf8(text) && text.find('\0') == std::string::npos);
}

void checkUsage(const DashboardData& data)
{
    require(data.appUsage.size() <= 20);
    for (const AppUsage& app : data.appUsage) {
        checkText(app.appName);
        checkText(app.bundleId);
        checkText(app.categoryLabel);
        require(app.sessionCount > 0);
    }
    std::int64_t lastHour = -1;
    for (const HourlyTimelineEntry& entry : data.hourlyTimeline) {
        require(entry.hour > lastHour && entry.hour < 24 && entry.total > 0);
        lastHour = entry.hour;
        require(std::ranges::is_sorted(entry.apps, std::greater<>(), &HourUsage::seconds));
        for (const HourUsage& app : entry.apps) {
            checkText(app.appName);
            require(app.hour == entry.hour && app.seconds > 0);
        }
    }
}

void checkKeys(const DashboardData& data)
{
    require(data.keylogHourly.empty() || data.keylogHourly.size() == 24);
    for (std::size_t i = 0; i < data.keylogHourly.size(); ++i) {
        const KeylogHourly& hour = data.keylogHourly[i];
        require(hour.hour == static_cast<std::int64_t>(i) && std::isfinite(hour.tokens));
        for (const auto& [name, app] : hour.apps) {
            checkText(name);
            checkText(app.inputMethod);
        }
    }
    require(std::isfinite(data.totalKeylogTokens) && std::isfinite(data.tpm));
}

void checkCategories(const DashboardData& data)
{
    std::set<std::string> keys;
    for (const CategoryUsage& usage : data.categoryUsage) {
        checkText(usage.category);
        checkText(usage.label);
        require(keys.insert(usage.category).second);
        require(usage.appCount > 0 && usage.sessionCount >= usage.appCount);
    }
}

void checkLists(const DashboardData& data)
{
    for (const AlertRecord& alert : data.alerts) {
        checkText(alert.alertType);
        checkText(alert.severity);
        checkText(alert.message);
    }
    require(std::ranges::is_sorted(data.alerts, std::greater<>(), &AlertRecord::timestamp));
    require(data.recentSessions.size() <= 200 && data.recentIdles.size() <= 200);
    for (const SessionDetail& session : data.recentSessions) {
        checkText(session.appName);
        checkText(session.bundleId);
        require(!durationText(session).empty());
        require((session.status == "active") == !session.endedAt);
    }
    for (const IdleRecord& idle : data.recentIdles) {
        require(!durationText(idle).empty());
    }
}

void checkFocus(const DashboardData& data)
{
    require(data.focusHours.size() <= 24);
    for (std::size_t i = 0; i < data.focusHours.size(); ++i) {
        const FocusHour& hour = data.focusHours[i];
        require(hour.hour == static_cast<std::int64_t>(i));
        require(hour.activeSec >= 0 && (hour.activeSec > 0) == (hour.activeDays > 0));
    }
    for (const DurationBucket& bucket : data.durationBuckets) {
        require(!bucket.label.empty() && bucket.count > 0);
    }
}

bool isSame(double found, const std::optional<double>& wanted)
{
    return found == wanted.value_or(0) || (std::isnan(found) && std::isnan(*wanted));
}

/// The narrowed history has the daily averages of all of history.
void checkDailyAverages(sqlite3* db)
{
    StoreQuery query(db, kDailyAvgSessionsSql);
    std::vector<DailyAvgSession> days = queryDailyAvgSessions(db);
    auto day = days.cbegin();
    while (query.next()) {
        const auto date = query.text(0);
        if (!date) {
            continue;
        }
        require(day != days.cend() && day->date == *date && isSame(day->avgUnder5, query.real(1))
            && isSame(day->avg5to10, query.real(2)) && isSame(day->avgOver10, query.real(3)));
        ++day;
    }
    require(day == days.cend());
}

void checkTrend(sqlite3* db)
{
    std::set<double> dates;
    const auto points = computeTrend(db, CategoryStore::loadRuleSet(db), kNow);
    for (const CategoryTrendPoint& point : points) {
        checkText(point.category);
        checkText(point.label);
        dates.insert(point.date);
    }
    require(dates.size() <= 15);
    require(std::ranges::is_sorted(points, std::less<>(), &CategoryTrendPoint::date));
}

} // namespace
} // namespace quillbrook

/// Whatever rows a store holds, every page's record keeps its promises.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    FuzzInput input(data, size);
    Stores& all = stores();
    const bool isTyped = input.byte() % 2 == 0;
    const RefreshContext context = anyContext(input);
    all.machine.timeZone.setSecondsFromUtc(input.number<std::int8_t>() * 900);
    all.fill(isTyped, input);

    const std::string path = Stores::path(isTyped);
    const DashboardData record = performRefreshSync(all.machine.platform(), path, context);
    checkUsage(record);
    checkKeys(record);
    checkCategories(record);
    checkLists(record);
    checkFocus(record);
    const Connection connection = openConnection(path, kReaderFlags).connection;
    if (context.tab == NavTab::habit) {
        checkTrend(connection.get());
    }
    if (context.tab == NavTab::focus) {
        checkDailyAverages(connection.get());
    }
    return 0;
}
