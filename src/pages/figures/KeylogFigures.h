#pragma once

#include "base/SystemColor.h"
#include "pages/marks/FigureContent.h"
#include "pages/marks/Mark.h"
#include "report/ReportRecords.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// The keys of one group of input methods.
struct InputMethodStat {
    std::string_view method{};
    std::string_view label{};
    std::int64_t keystrokes = 0;
    SystemColor color = SystemColor::gray;

    bool operator==(const InputMethodStat&) const = default;
};

/// What one application received.
struct AppTokens {
    std::string app{};
    std::int64_t keystrokes = 0;
    double tokens = 0;

    bool operator==(const AppTokens&) const = default;
};

/// "english", "shuangpin", "quanpin" or "other", by what a recorded input method contains.
std::string_view categorizeMethod(std::string_view inputMethod);

/// The groups with keys, most keys first.
std::vector<InputMethodStat> inputMethodStats(std::span<const KeylogHourly> hourly);

/// The applications, most tokens first.
std::vector<AppTokens> appStats(std::span<const KeylogHourly> hourly);

/// What has a bar in the ranking: the first ten.
std::vector<AppTokens> rankedApps(std::vector<AppTokens> apps);

/// "999", "1.0k", "1.0万".
std::string tokStr(double totalTokens);

/// "999", "10.0k": no form in 万, unlike `tokStr`.
std::string tokLabel(double tokens);

/// The four cards of the Tokens page, from left to right.
std::array<FigureContent, 4> keylogCards(const DashboardData& data);

constexpr double kHourlyBarHeight = 170; // with the room for the hours

/// The keys of each hour as bars, then the counts over them. A count that would lie over another
/// bar or count is left out.
std::vector<Mark> hourlyBarMarks(
    std::span<const KeylogHourly> hourly, double width, const TextWidth& textWidth);

/// The keys of each group of input methods as a ring, with the groups' names under it, and how high
/// that is.
std::vector<Mark> inputMethodMarks(std::span<const InputMethodStat> stats, double width);
double inputMethodHeight(std::size_t groups);

/// The ranking as lying bars, and how high it is at least.
std::vector<Mark> appTokenMarks(
    std::span<const AppTokens> ranked, Size size, const TextWidth& textWidth);
double appTokenHeight(std::size_t ranked);

/// A paragraph of the popover that explains the tokens.
struct TokenInfo {
    std::string_view name{};
    std::string value{};
    std::string_view note{};
};

std::array<TokenInfo, 4> tokenInfos();

} // namespace quillbrook
