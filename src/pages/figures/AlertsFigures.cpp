#include "pages/figures/AlertsFigures.h"

#include "base/IsoTime.h"
#include "base/Utc8Day.h"
#include "base/Utc8Text.h"

#include <algorithm>
#include <compare>
#include <functional>
#include <map>
#include <numeric>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kLabelDistance = 55; // points
constexpr std::string_view kCritical = "critical";

/// A day's kinds while its alerts are sorted into them, in the order of their first records.
struct OpenDay {
    std::vector<AlertTimelineRow> groups{};
    std::map<std::string, std::size_t> places{}; // in `groups`, by type

    AlertTimelineRow& group(const AlertRecord& alert)
    {
        const auto [place, isNew] = places.try_emplace(alert.alertType, groups.size());
        if (isNew) {
            groups.push_back({.type = alert.alertType, .severity = alert.severity});
        }
        return groups[place->second];
    }
};

AlertDay closed(const std::string& date, OpenDay day)
{
    for (AlertTimelineRow& group : day.groups) {
        std::sort(group.times.begin(), group.times.end(),
            [](Date left, Date right) { return std::weak_order(left, right) < 0; });
    }
    std::stable_partition(day.groups.begin(), day.groups.end(),
        [](const AlertTimelineRow& group) { return group.severity == kCritical; });
    return {date, std::move(day.groups)};
}

constexpr auto kTypeLabels = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"high_load", "高负载"},
    {"critical_load", "极高负载"},
    {"high_memory", "内存不足"},
    {"high_swap", "Swap 不足"},
    {"windowserver_high", "图形异常"},
    {"windowserver_crash", "图形崩溃"},
});

// The last one can stand in a store, though nothing writes it today.
constexpr auto kRules = std::to_array<AlertRule>({
    {"cpu", SystemColor::orange, "高负载 (warning)", "load_5m > 20 持续 10 次采样"},
    {"cpu", SystemColor::red, "极高负载 (critical)", "load_5m > 50 持续 5 次采样"},
    {"memorychip", SystemColor::orange, "内存不足 (warning)", "memory > 85% 持续 5 次采样"},
    {"arrow.triangle.swap", SystemColor::red, "Swap 严重不足 (critical)", "swap > 80%"},
    {"display", SystemColor::orange, "图形系统异常 (warning)",
        "WindowServer CPU > 30% 持续 5 次采样"},
    {"display.trianglebadge.exclamationmark", SystemColor::red, "图形系统崩溃 (critical)",
        "WindowServer Watchdog 超时，图形系统重启"},
});

} // namespace

std::vector<AlertDay> grouped(std::span<const AlertRecord> alerts)
{
    std::map<std::string, OpenDay, std::greater<>> days;
    for (const AlertRecord& alert : alerts) {
        days[utc8DashedDate(alert.timestamp)].group(alert).times.push_back(alert.timestamp);
    }
    std::vector<AlertDay> all;
    all.reserve(days.size());
    for (auto& [date, day] : days) {
        all.push_back(closed(date, std::move(day)));
    }
    return all;
}

std::string todayDateStr(double now)
{
    return utc8DashedDate(now);
}

std::string dayTotal(const AlertDay& day)
{
    const std::size_t total
        = std::accumulate(day.alertGroups.begin(), day.alertGroups.end(), std::size_t{0},
            [](std::size_t sum, const auto& group) { return sum + group.times.size(); });
    return std::to_string(total) + " 次告警";
}

double timeFraction(Date date)
{
    const CivilTime time = civilTime(date, static_cast<int>(kUtc8OffsetSec));
    const int seconds = time.hour * 3600 + time.minute * 60 + time.second;
    return seconds / static_cast<double>(kDaySec);
}

std::string timeString(Date date)
{
    return utc8HourMinute(date);
}

std::vector<std::size_t> labelIndicesToShow(std::span<const double> fractions, double width)
{
    std::vector<std::size_t> shown;
    for (std::size_t index = 0; index < fractions.size(); ++index) {
        const double position = fractions[index] * width;
        if (shown.empty() || position - fractions[shown.back()] * width >= kLabelDistance) {
            shown.push_back(index);
        }
    }
    return shown;
}

std::string typeLabel(const std::string& type)
{
    const auto* const found = std::find_if(kTypeLabels.begin(), kTypeLabels.end(),
        [&](const auto& entry) { return entry.first == type; });
    return found == kTypeLabels.end() ? type : std::string(found->second);
}

SystemColor severityColor(std::string_view severity)
{
    return severity == kCritical ? SystemColor::red : SystemColor::orange;
}

std::span<const AlertRule> alertRules()
{
    return kRules;
}

} // namespace quillbrook
