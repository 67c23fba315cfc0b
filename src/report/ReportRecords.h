#pragma once

#include "base/Uuid.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

/// An instant, seconds since 1970, as it stands in the store.
using Date = double;

/// The figures of the Today page.
struct TodayOverview {
    Date bootTime = 0; // of the machine's current boot, whole seconds; 0 when it can't be told
    std::optional<Date> firstActivity{};
    std::optional<Date> lastActivity{};
    std::int64_t activeAppCount = 0;
    double totalActiveHours = 0;
    std::int64_t sessionCount = 0; // closed sessions
    std::int64_t appSwitchCount = 0; // the same number as `sessionCount`, deliberately
    double avgSessionMinutes = 0; // 0 without sessions
    double longestSessionMinutes = 0;
};

/// The figures of the Past page.
struct HistoryOverview {
    double totalActiveHours = 0;
    std::int64_t activeAppCount = 0;
    std::int64_t appSwitchCount = 0;
    std::int64_t bootCount = 0;
};

/// One application's share of a period.
struct AppUsage {
    Uuid id = Uuid::random(); // tells the rows of a list apart, never stored
    std::string appName{};
    std::string bundleId = "unknown";
    double totalSeconds = 0;
    std::int64_t sessionCount = 0;
    std::string categoryLabel{}; // the label shown, not the key
};

/// One application's share of an hour.
struct HourUsage {
    Uuid id = Uuid::random();
    std::int64_t hour = 0; // 0 to 23
    std::string appName{};
    double seconds = 0;
};

/// An hour with activity.
struct HourlyTimelineEntry {
    std::int64_t hour = 0; // 0 to 23, of the day of UTC+8
    double total = 0; // seconds
    std::vector<HourUsage> apps{}; // most seconds first
};

/// An hour while the timeline's rows are folded; never published.
struct HourBucket {
    double total = 0;
    std::vector<std::pair<std::string, double>> apps{};
};

struct AlertRecord {
    Uuid id = Uuid::random();
    Date timestamp = 0;
    std::string alertType{};
    std::string severity{};
    std::string message{};
};

/// What an application received in an hour.
struct KeylogApp {
    std::int64_t keystrokes = 0;
    std::string inputMethod{}; // of the row read last, for all of its keys

    bool operator==(const KeylogApp&) const = default;
};

/// An hour of keys.
struct KeylogHourly {
    Uuid id = Uuid::random();
    std::int64_t hour = 0; // 0 to 23
    std::int64_t keystrokes = 0;
    double tokens = 0; // the whole hour at the rate of its dominant method
    std::int64_t sessionCount = 0; // groups of application and input method
    std::int64_t durationSeconds = 0; // always 0
    std::map<std::string, KeylogApp> apps{}; // by application name
};

/// One category's share of a period.
struct CategoryUsage {
    Uuid id = Uuid::random();
    std::string category{}; // the key
    std::string label{};
    double totalSeconds = 0;
    std::int64_t sessionCount = 0;
    std::int64_t appCount = 0; // distinct application names
    double pct = 0; // a share from 0 to 1, despite its name
};

struct CategorySession {
    Uuid id = Uuid::random();
    Date startTime = 0;
    Date endTime = 0;
    std::string category{};
    std::string label{};
    std::string appName{};
    double durationSec = 0;
};

/// One category's hours on one day.
struct CategoryTrendPoint {
    Uuid id = Uuid::random();
    Date date = 0; // when that day starts in UTC+8
    std::string category{}; // the key
    std::string label{};
    double hours = 0;
};

struct SessionDetail {
    Uuid id = Uuid::random();
    std::string appName{};
    std::string bundleId = "unknown";
    Date startedAt = 0;
    std::optional<Date> endedAt{};
    double durationSec = 0;
    std::string closeType{}; // a label, not the stored code
    std::string status{}; // "active", "closed" or "recover"
};

struct IdleRecord {
    Uuid id = Uuid::random();
    std::int64_t rowId = 0; // of the store's row
    Date startedAt = 0;
    std::optional<Date> endedAt{};
    double durationSec = 0;
    std::int64_t sourceType = 1; // the stored code
};

struct FocusHour {
    Uuid id = Uuid::random();
    std::int64_t hour = 0;
    double activeSec = 0; // over all days of the period
    std::int64_t activeDays = 0;
};

struct DurationBucket {
    Uuid id = Uuid::random();
    std::string label{};
    std::int64_t rangeMin = 0; // seconds
    std::int64_t count = 0;
};

/// Mean session lengths of a day in three groups, minutes with two decimals, 0 without a session.
struct DailyAvgSession {
    Uuid id = Uuid::random();
    std::string date{}; // "MM-dd" in UTC+8
    double avgUnder5 = 0;
    double avg5to10 = 0;
    double avgOver10 = 0;
};

/// What one refresh found. Only the fields of the page that asked are filled.
struct DashboardData {
    std::vector<AppUsage> appUsage{}; // at most 20
    std::int64_t alertCount = 0; // since the start of today
    std::optional<TodayOverview> overview{};
    std::optional<HistoryOverview> historyOverview{};
    std::vector<HourlyTimelineEntry> hourlyTimeline{}; // hours with activity alone, ascending
    std::vector<AlertRecord> alerts{}; // newest first
    std::vector<KeylogHourly> keylogHourly{}; // 24, or none when keys were not asked for
    std::int64_t totalKeylogKeystrokes = 0;
    double totalKeylogTokens = 0; // estimated
    std::int64_t totalActiveKeylogMinutes = 0;
    double tpm = 0; // tokens per active minute
    std::vector<CategoryUsage> categoryUsage{}; // most seconds first
    std::vector<CategorySession> categorySessions{}; // always empty
    double totalActiveSeconds = 0; // over `categoryUsage`
    std::vector<SessionDetail> recentSessions{}; // at most 200, newest first
    std::vector<IdleRecord> recentIdles{}; // at most 200, newest first
    std::vector<FocusHour> focusHours{}; // from hour 0 on
    std::vector<DurationBucket> durationBuckets{}; // those with sessions alone
    std::vector<DailyAvgSession> dailyAvgSessions{}; // one for each day with sessions
};

/// "45秒", "12.5分钟" or "1.25小时": the length of a row of the Sessions and Idles pages. The unit
/// follows the seconds before rounding, so that 59.9 s read "60秒". What is no finite number reads
/// as 0.
std::string durationText(const SessionDetail& session);
std::string durationText(const IdleRecord& idle);

} // namespace quillbrook
