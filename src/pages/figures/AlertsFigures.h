#pragma once

#include "base/SystemColor.h"
#include "report/ReportRecords.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// One kind of alert on one day: a line over 24 hours.
struct AlertTimelineRow {
    std::string type{};
    std::string severity = "warning"; // of the kind's first record
    std::vector<Date> times{}; // ascending

    bool operator==(const AlertTimelineRow&) const = default;
};

/// The alerts of all days with the same month and day.
struct AlertDay {
    std::string date{}; // "MM-dd" in UTC+8
    std::vector<AlertTimelineRow> alertGroups{}; // critical ones first

    bool operator==(const AlertDay&) const = default;
};

/// The alerts by day and kind. The days stand by their text, descending; it has no year, so that
/// December stands above January across a turn of the year.
std::vector<AlertDay> grouped(std::span<const AlertRecord> alerts);

/// "MM-dd" of the present day in UTC+8.
std::string todayDateStr(double now);

/// "3 次告警": all alerts of a day.
std::string dayTotal(const AlertDay& day);

/// An hour that is written along a day's axis.
struct HourTick {
    double frac = 0; // of the day
    std::string_view label{};

    bool operator==(const HourTick&) const = default;
};

/// The even hours.
inline constexpr auto hourTicks = std::to_array<HourTick>({
    {0 / 24.0, "00"},
    {2 / 24.0, "02"},
    {4 / 24.0, "04"},
    {6 / 24.0, "06"},
    {8 / 24.0, "08"},
    {10 / 24.0, "10"},
    {12 / 24.0, "12"},
    {14 / 24.0, "14"},
    {16 / 24.0, "16"},
    {18 / 24.0, "18"},
    {20 / 24.0, "20"},
    {22 / 24.0, "22"},
});

/// The part of its day in UTC+8 that has passed at an instant, whole seconds over 86,400.
double timeFraction(Date date);

/// "HH:mm" in UTC+8.
std::string timeString(Date date);

/// Which of the ascending `fractions` of an axis of `width` have room for their label: the first,
/// and each one at 55 points or more from the last that has.
std::vector<std::size_t> labelIndicesToShow(std::span<const double> fractions, double width);

/// What a kind is called; the kind itself where it has no name.
std::string typeLabel(const std::string& type);

SystemColor severityColor(std::string_view severity);

/// A rule that the alerts follow.
struct AlertRule {
    std::string_view symbol{};
    SystemColor color = SystemColor::orange;
    std::string_view title{};
    std::string_view condition{};
};

std::span<const AlertRule> alertRules();

} // namespace quillbrook
