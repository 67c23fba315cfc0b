#pragma once

#include "pages/marks/FigureContent.h"
#include "report/ReportRecords.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace quillbrook {

/// The active time, whole minutes cut off: "30m", "2h4m". Fatal when it is not finite.
std::string activeMinutesStr(double totalActiveHours);

/// The longest session in the same form.
std::string longestFocusStr(double longestSessionMinutes);

/// "HH:mm" in UTC+8 of an instant in seconds since 1970; "--:--" when there is none.
std::string firstActivityString(const std::optional<double>& firstActivity);

/// 999, "1,000", "1.0 万".
std::string formatCount(std::int64_t count);

/// The four cards of the Today page, from left to right.
std::array<FigureContent, 4> overviewCards(
    const TodayOverview& overview, std::int64_t appCount, std::int64_t keystrokeCount);

/// A paragraph of the popover that explains the cards.
struct InfoItem {
    std::string symbol{};
    SystemColor color = SystemColor::blue;
    std::string name{};
    std::string detail{};
};

std::array<InfoItem, 4> kpiInfoItems();

} // namespace quillbrook
