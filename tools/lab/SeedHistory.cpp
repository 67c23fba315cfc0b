#include "lab/SeedHistory.h"

#include "base/Sqlite.h"
#include "base/Utc8Day.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <random>
#include <string_view>

namespace quillbrook::lab {

namespace {

struct SeedApp {
    std::string_view name;
    std::string_view bundleId;
};

constexpr auto kApps = std::to_array<SeedApp>({
    {"Visual Studio Code", "com.microsoft.VSCode"},
    {"Google Chrome", "com.google.Chrome"},
    {"微信", "com.tencent.xinWeChat"},
    {"Terminal", "com.apple.Terminal"},
    {"Safari", "com.apple.Safari"},
    {"Slack", "com.tinyspeck.slackmacgap"},
    {"访达", "com.apple.finder"},
    {"Xcode", "com.apple.dt.Xcode"},
    {"邮件", "com.apple.mail"},
    {"备忘录", "com.apple.Notes"},
    {"Obsidian", "md.obsidian"},
    {"Figma", "com.figma.Desktop"},
    {"Notion", "notion.id"},
    {"Microsoft Word", "com.microsoft.Word"},
    {"Microsoft Excel", "com.microsoft.Excel"},
    {"地图", "com.apple.Maps"},
    {"zoom.us", "us.zoom.xos"},
    {"Spotify", "com.spotify.client"},
    {"网易云音乐", "com.netease.163music"},
    {"IINA", "com.colliderli.iina"},
    {"QQ", "com.tencent.qq"},
    {"飞书", "com.electron.lark"},
    {"Photoshop", "com.adobe.Photoshop"},
    {"预览", "com.apple.Preview"},
    {"系统设置", "com.apple.systempreferences"},
    {"活动监视器", "com.apple.ActivityMonitor"},
    {"支付宝", "com.alipay.Alipay"},
    {"Steam", "com.valvesoftware.steam"},
    {"ChatGPT", "com.openai.chat"},
    {"Alfred", "com.runningwithcrayons.Alfred"},
    {"loginwindow", "com.apple.loginwindow"},
    {"Helper", ""},
});

struct SeedAlert {
    const char* type;
    const char* severity;
    const char* message;
    const char* metrics;
};

constexpr auto kAlerts = std::to_array<SeedAlert>({
    {"high_load", "warning", "5分钟负载达到 24.5，建议减少同时运行的应用", R"({"load_5m":24.5})"},
    {"critical_load", "critical", "5分钟负载达到 55.0！系统即将不可用，请立即关闭部分应用或重启",
        R"({"load_5m":55})"},
    {"high_memory", "warning", "内存使用率达到 91%，可能导致应用崩溃", R"({"memory_percent":91})"},
    {"high_swap", "critical", "Swap 使用率达 85%，系统可能强制终止应用", R"({"swap_percent":85})"},
    {"windowserver_high", "warning", "WindowServer CPU 达到 44%，图形系统可能不稳定",
        R"({"windowserver_cpu":44})"},
});

constexpr std::array<std::string_view, 4> kMethods = {"shuangpin", "english", "quanpin", "other"};

/// Chance that comes out alike on every system, unlike the standard library's distributions.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : engine(seed) {}

    /// From 0 up to, not including, 1.
    double part() { return static_cast<double>(engine() >> 11U) * 0x1p-53; }
    double between(double low, double high) { return low + (high - low) * part(); }
    std::size_t below(std::size_t count) { return engine() % count; }
    bool happens(double probability) { return part() < probability; }

private:
    std::mt19937_64 engine;
};

/// A prepared INSERT whose rows are given one after the other.
class Inserter {
public:
    Inserter(sqlite3* db, const char* sql) : statement(prepare(db, sql)) {}

    Inserter& add(double value) { return bound(sqlite3_bind_double(statement.get(), ++at, value)); }
    Inserter& add(std::int64_t value)
    {
        return bound(sqlite3_bind_int64(statement.get(), ++at, value));
    }
    Inserter& add(std::string_view value)
    {
        return bound(sqlite3_bind_text(
            statement.get(), ++at, value.data(), static_cast<int>(value.size()), SQLITE_STATIC));
    }

    void insert()
    {
        isFine = isFine && sqlite3_step(statement.get()) == SQLITE_DONE;
        sqlite3_reset(statement.get());
        at = 0;
    }

    bool succeeded() const { return isFine; }

private:
    Inserter& bound(int result)
    {
        isFine = isFine && result == SQLITE_OK;
        return *this;
    }

    Statement statement;
    int at = 0;
    bool isFine = true;
};

class History {
public:
    History(sqlite3* db, const SeedPlan& plan)
        : plan(plan)
        , chance(plan.seed)
        , sessions(db,
              "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
              "close_type) VALUES (?, ?, ?, ?, ?, ?)")
        , idles(db,
              "INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type) "
              "VALUES (?, ?, ?, ?)")
        , keys(db,
              "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
              "VALUES (?, ?, ?, ?)")
        , alerts(db,
              "INSERT INTO alerts (timestamp, alert_type, severity, message, metrics_json) "
              "VALUES (?, ?, ?, ?, ?)")
        , boots(db, "INSERT INTO boot_events (timestamp, boot_time) VALUES (?, ?)")
    {
    }

    bool write()
    {
        const std::int64_t today = utc8DayNumber(plan.now);
        for (std::int64_t day = today - plan.days + 1; day <= today; ++day) {
            writeDay(day);
        }
        return sessions.succeeded() && idles.succeeded() && keys.succeeded() && alerts.succeeded()
            && boots.succeeded();
    }

private:
    void writeDay(std::int64_t day)
    {
        const double dayStart = utc8DayStart(day);
        const bool isWeekend = (day + 3) % 7 >= 5; // day 0 was a Thursday
        const double begins = dayStart + (isWeekend ? 10.5 : 8.5) * 3600 + chance.between(0, 1800);
        const double ends = begins + (isWeekend ? 6 : 13) * 3600.0;
        // A boot is older than its row, and rows are kept for 30 days.
        if (day % 3 == 0 && plan.now - begins < 30 * 86400.0 && begins < plan.now) {
            boots.add(begins).add(std::floor(begins - 40)).insert();
        }
        const double mean = (ends - begins - 5400)
            / static_cast<double>(std::max<std::int64_t>(1, plan.sessionsPerDay));
        const double lunch = dayStart + 12 * 3600 + chance.between(0, 1200);
        double cursor = begins;
        std::int64_t closeType = 5;
        bool hadLunch = false;
        for (std::int64_t i = 0; i < plan.sessionsPerDay && cursor < plan.now; ++i) {
            cursor = writeSession(cursor, mean, closeType);
            closeType = 0;
            if (!hadLunch && cursor >= lunch) {
                cursor = writeIdle(cursor, chance.between(2400, 4200), 3);
                closeType = 3;
                hadLunch = true;
            } else if (chance.happens(0.01)) {
                cursor = writeIdle(cursor, chance.between(300, 900), 1);
                closeType = 1;
            }
        }
        const double night = utc8DayStart(day + 1) + 8.4 * 3600 - cursor;
        writeIdle(cursor, night, chance.happens(0.2) ? 4 : 2);
        writeAlerts(begins, ends);
    }

    /// Returns when the session ends.
    double writeSession(double start, double mean, std::int64_t closeType)
    {
        // Few applications have most of the day.
        const double rank = chance.part();
        const SeedApp& app
            = kApps[static_cast<std::size_t>(rank * rank * static_cast<double>(kApps.size()))];
        // Most sessions are short and a few long; six seconds keep equal names apart.
        const double length
            = 6 + std::min(-std::log(1 - chance.part()) * std::max(mean - 6, 1.0), 14400.0);
        const double end = start + std::floor(length * 1000) / 1000;
        if (end < plan.now) {
            sessions.add(app.name)
                .add(app.bundleId)
                .add(start)
                .add(end)
                .add(end - start)
                .add(closeType)
                .insert();
            writeKeys(start, end, app);
        }
        return end;
    }

    void writeKeys(double start, double end, const SeedApp& app)
    {
        const auto last = static_cast<std::int64_t>(std::floor(end / 60));
        for (auto minute = static_cast<std::int64_t>(std::floor(start / 60)) + 1; minute <= last;
             ++minute) {
            if (chance.happens(0.4)) {
                keys.add(static_cast<double>(minute * 60))
                    .add(app.name)
                    .add(kMethods[chance.below(kMethods.size())])
                    .add(static_cast<std::int64_t>(5 + chance.below(240)))
                    .insert();
            }
        }
    }

    double writeIdle(double start, double length, std::int64_t sourceType)
    {
        const double end = start + length;
        if (end < plan.now && length > 0) {
            idles.add(start).add(end).add(end - start).add(sourceType).insert();
        }
        return end;
    }

    void writeAlerts(double begins, double ends)
    {
        for (const SeedAlert& alert : kAlerts) {
            const double time = std::floor(chance.between(begins, ends));
            if (chance.happens(0.3) && time < plan.now) {
                alerts.add(time)
                    .add(std::string_view(alert.type))
                    .add(std::string_view(alert.severity))
                    .add(std::string_view(alert.message))
                    .add(std::string_view(alert.metrics))
                    .insert();
            }
        }
    }

    const SeedPlan& plan;
    Chance chance;
    Inserter sessions;
    Inserter idles;
    Inserter keys;
    Inserter alerts;
    Inserter boots;
};

} // namespace

bool seedHistory(sqlite3* db, const SeedPlan& plan)
{
    // Nobody else has the store yet, and a seeding that is cut short is begun anew.
    sqlite3_exec(db, "PRAGMA synchronous=OFF; PRAGMA cache_size=-65536", nullptr, nullptr, nullptr);
    if (sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr) != SQLITE_OK) {
        return false;
    }
    const bool isWritten = History(db, plan).write();
    return sqlite3_exec(db, isWritten ? "COMMIT" : "ROLLBACK", nullptr, nullptr, nullptr)
        == SQLITE_OK
        && isWritten;
}

} // namespace quillbrook::lab
