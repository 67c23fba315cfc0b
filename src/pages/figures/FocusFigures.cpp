#include "pages/figures/FocusFigures.h"

#include "base/Text.h"
#include "base/WholeNumber.h"
#include "pages/figures/Formatting.h"
#include "pages/figures/TimelineFigures.h"
#include "pages/marks/BarMarks.h"
#include "pages/marks/LineMarks.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

namespace quillbrook {

namespace {

constexpr double kHourSec = 3600;
constexpr double kHighRatio = 0.8;
constexpr int kLastHour = 23;
constexpr double kLegendGap = 20;

double sumOf(std::span<const FocusHour> rows, double (*part)(const FocusHour&))
{
    return std::accumulate(rows.begin(), rows.end(), 0.0,
        [part](double sum, const FocusHour& row) { return sum + part(row); });
}

double activeSec(const FocusHour& row)
{
    return row.activeSec;
}

double idleSec(const FocusHour& row)
{
    return std::max(availableSec(row) - row.activeSec, 0.0);
}

Axis hourAxis()
{
    // The first hour's bar and the last one's stand whole beside the numbers at the left.
    Axis axis{.from = 0, .to = kLastHour, .hasEvenLabels = true, .margin = 0.5, .title = "小时"};
    for (int hour = 0; hour <= kLastHour; hour += 2) {
        axis.marks.push_back({static_cast<double>(hour), hourText(hour)});
    }
    return axis;
}

Axis percentAxis()
{
    Axis axis{.from = 0, .to = 100, .hasGrid = true, .title = "%"};
    for (const int percent : {0, 25, 50, 75, 100}) {
        axis.marks.push_back({static_cast<double>(percent), std::to_string(percent) + "%"});
    }
    return axis;
}

VerticalBar hourBar(const FocusHour& row)
{
    const double ratio = activeRatio(row);
    const double percent = ratio * 100;
    const std::string hour = hourText(row.hour);
    return {.at = static_cast<double>(row.hour),
        .amount = percent,
        .tint = {ratio >= kHighRatio ? SystemColor::green : SystemColor::blue},
        .datum = {.name = hour,
            .value = shortestText(percent),
            .help = hour + ": " + fixedText(percent, 0) + "%"}};
}

/// One of the three groups of session lengths.
struct LengthGroup {
    const char* label;
    SystemColor color;
    double DailyAvgSession::*average;
};

constexpr std::array kLengthGroups = {
    LengthGroup{"<5分钟", SystemColor::blue, &DailyAvgSession::avgUnder5},
    LengthGroup{"5-10分钟", SystemColor::orange, &DailyAvgSession::avg5to10},
    LengthGroup{">10分钟", SystemColor::green, &DailyAvgSession::avgOver10},
};

LineSeries lineOf(const LengthGroup& group, std::span<const DailyAvgSession> days)
{
    LineSeries line{.label = group.label, .tint = {group.color}};
    for (const DailyAvgSession& day : days) {
        const double minutes = day.*group.average;
        const std::string name = std::string(group.label) + " " + day.date;
        line.points.push_back({.at = static_cast<double>(line.points.size()),
            .amount = minutes,
            .datum = {.name = name,
                .value = shortestText(minutes),
                .help = name + ": " + fixedText(minutes, 1) + " 分钟"}});
    }
    return line;
}

} // namespace

double availableSec(const FocusHour& row)
{
    return static_cast<double>(row.activeDays) * kHourSec;
}

double activeRatio(const FocusHour& row)
{
    const double available = availableSec(row);
    return available > 0 ? row.activeSec / available : 0;
}

std::vector<FocusHour> activeHours(std::span<const FocusHour> focusHours)
{
    std::vector<FocusHour> active;
    std::copy_if(focusHours.begin(), focusHours.end(), std::back_inserter(active),
        [](const FocusHour& row) { return row.activeDays >= 1; });
    return active;
}

std::int64_t totalActive(std::span<const FocusHour> focusHours)
{
    return wholeNumber(sumOf(activeHours(focusHours), activeSec) / 60);
}

std::int64_t totalIdle(std::span<const FocusHour> focusHours)
{
    return wholeNumber(sumOf(activeHours(focusHours), idleSec) / 60);
}

double overallRatio(std::span<const FocusHour> focusHours)
{
    const std::vector<FocusHour> active = activeHours(focusHours);
    const double available = sumOf(active, availableSec);
    return available > 0 ? sumOf(active, activeSec) / available : 0;
}

std::optional<FocusHour> bestHour(std::span<const FocusHour> focusHours)
{
    const auto best = std::max_element(focusHours.begin(), focusHours.end(),
        [](const FocusHour& a, const FocusHour& b) { return activeRatio(a) < activeRatio(b); });
    return best == focusHours.end() ? std::nullopt : std::optional(*best);
}

double bucketYMax(std::span<const DurationBucket> buckets)
{
    std::int64_t most = 0;
    for (const DurationBucket& bucket : buckets) {
        most = std::max(most, bucket.count);
    }
    return std::max(static_cast<double>(most) * 1.15, 5.0);
}

double dailyAvgYMax(std::span<const DailyAvgSession> days)
{
    double most = 0;
    for (const DailyAvgSession& day : days) {
        most = std::max({most, day.avgUnder5, day.avg5to10, day.avgOver10});
    }
    return std::max(std::ceil(most * 1.3), 3.0);
}

std::array<FigureContent, 4> focusCards(std::span<const FocusHour> focusHours)
{
    const std::optional<FocusHour> best = bestHour(focusHours);
    return {{
        {"flame.fill", SystemColor::orange, std::to_string(totalActive(focusHours)) + "分钟",
            "活跃"},
        {"moon.zzz.fill", SystemColor::indigo, std::to_string(totalIdle(focusHours)) + "分钟",
            "空闲"},
        {"gauge.with.dots.needle.33percent", SystemColor::teal,
            fixedText(overallRatio(focusHours) * 100, 0) + "%", "专注度"},
        {"star.fill", SystemColor::yellow, best ? hourText(best->hour) : "--:--", "最佳时段"},
    }};
}

std::vector<Mark> activeDistributionMarks(
    std::span<const FocusHour> focusHours, Size size, const TextWidth& textWidth)
{
    VerticalBarChart chart{.axes = {.x = hourAxis(), .y = percentAxis()}};
    for (const FocusHour& row : focusHours) {
        chart.bars.push_back(hourBar(row));
    }
    return verticalBarMarks(chart, size, textWidth);
}

std::vector<Mark> durationBucketMarks(
    std::span<const DurationBucket> buckets, Size size, const TextWidth& textWidth)
{
    std::vector<std::string> labels;
    VerticalBarChart chart;
    for (const DurationBucket& bucket : buckets) {
        chart.bars.push_back({.at = static_cast<double>(labels.size()),
            .amount = static_cast<double>(bucket.count),
            .tint = {SystemColor::orange},
            .datum = {.name = bucket.label,
                .value = std::to_string(bucket.count),
                .help = bucket.label + ": " + std::to_string(bucket.count) + " 次"}});
        labels.push_back(bucket.label);
    }
    chart.axes = {.x = slotAxis(labels, "Session 时长"),
        .y = amountAxis(bucketYMax(buckets), "次数"),
        .look = {.labels = {.pixels = 8}}};
    return verticalBarMarks(chart, size, textWidth);
}

std::vector<Mark> dailyAvgMarks(
    std::span<const DailyAvgSession> days, Size size, const TextWidth& textWidth)
{
    std::vector<std::string> dates;
    for (const DailyAvgSession& day : days) {
        dates.push_back(day.date);
    }
    LineChart chart{.axes = {.x = slotAxis(dates, "日期"),
                        .y = amountAxis(dailyAvgYMax(days), "分钟"),
                        .look = {.labels = {.pixels = 8}, .legendGap = kLegendGap}}};
    for (const LengthGroup& group : kLengthGroups) {
        chart.series.push_back(lineOf(group, days));
    }
    return lineMarks(chart, size, textWidth);
}

} // namespace quillbrook
