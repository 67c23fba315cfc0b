#include "report/KeystrokeReports.h"

#include "base/Text.h"
#include "base/WholeNumber.h"
#include "report/StoreQuery.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr std::string_view kNoMethod = "其他";

std::vector<KeylogHourly> emptyHours()
{
    std::vector<KeylogHourly> hours(24);
    for (std::size_t hour = 0; hour < hours.size(); ++hour) {
        hours[hour].hour = static_cast<std::int64_t>(hour);
    }
    return hours;
}

void add(KeylogHourly& hour, const std::string& appName, const std::string& method,
    std::int64_t keystrokes)
{
    hour.keystrokes = boundedSum(hour.keystrokes, keystrokes);
    ++hour.sessionCount;
    KeylogApp& app = hour.apps[appName];
    app.keystrokes = boundedSum(app.keystrokes, keystrokes);
    app.inputMethod = method;
}

} // namespace

double tokenRate(std::string_view inputMethod)
{
    const auto* rate = std::ranges::find(
        tokensPerKeystroke, inputMethod, [](const auto& entry) { return entry.first; });
    return rate == tokensPerKeystroke.end() ? tokensPerKeystroke.back().second : rate->second;
}

std::optional<std::string> dominantMethod(const std::map<std::string, KeylogApp>& apps)
{
    std::map<std::string, std::int64_t> sums;
    for (const auto& [name, app] : apps) {
        std::int64_t& sum = sums[app.inputMethod];
        sum = boundedSum(sum, app.keystrokes);
    }
    auto best = sums.cbegin();
    for (auto each = sums.cbegin(); each != sums.cend(); ++each) {
        if (each->second > best->second) {
            best = each;
        }
    }
    return best == sums.cend() ? std::nullopt : std::optional(best->first);
}

KeystrokeData queryKeystrokeData(
    sqlite3* db, const std::string& dateFilter, std::int64_t tzOffsetSec)
{
    StoreQuery query(db,
        filled(R"(    SELECT
        ((timestamp + {}) / 3600) % 24 AS h,
        app_name,
        input_method,
        SUM(keystroke_count) AS ks
    FROM keystrokes
    WHERE {}
    GROUP BY h, app_name, input_method
    ORDER BY h)",
            {std::to_string(tzOffsetSec), dateFilter}));
    const int h = query.column("h");
    const int appName = query.column("app_name");
    const int inputMethod = query.column("input_method");
    const int ks = query.column("ks");

    KeystrokeData data{.hours = emptyHours()};
    while (query.next()) {
        // Timestamps are doubles, and so is the hour that the store works out of them.
        const auto hour = query.real(h);
        const auto name = query.text(appName);
        const auto method = query.text(inputMethod);
        const auto keystrokes = query.integer(ks);
        if (!hour || !name || !method || !keystrokes) {
            continue;
        }
        const std::int64_t index = wholeNumber(*hour);
        if (index >= 0 && index < 24) {
            add(data.hours[static_cast<std::size_t>(index)], *name, *method, *keystrokes);
        }
    }

    for (KeylogHourly& hour : data.hours) {
        hour.tokens = tokenRate(dominantMethod(hour.apps).value_or(std::string(kNoMethod)))
            * static_cast<double>(hour.keystrokes);
        data.totalKeystrokes = boundedSum(data.totalKeystrokes, hour.keystrokes);
        for (const auto& [name, app] : hour.apps) {
            data.totalTokens += tokenRate(app.inputMethod) * static_cast<double>(app.keystrokes);
        }
    }
    return data;
}

std::int64_t queryActiveKeylogMinutes(
    sqlite3* db, const std::string& dateFilter, std::int64_t tzOffsetSec)
{
    // The division keeps its fraction, so that this counts distinct timestamps. That is meant: the
    // keys of a minute are stored once and share one timestamp.
    StoreQuery query(db,
        filled(R"(    SELECT COUNT(DISTINCT (timestamp + {}) / 60) AS active_min
    FROM keystrokes
    WHERE {})",
            {std::to_string(tzOffsetSec), dateFilter}));
    return query.next() ? query.integer(query.column("active_min")).value_or(0) : 0;
}

} // namespace quillbrook
