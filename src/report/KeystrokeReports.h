#pragma once

#include "report/ReportRecords.h"

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillbrook {

/// Tokens for one key press, by input method, that of "other" last. Every estimate, and every text
/// that tells of one, takes them from here.
inline constexpr auto tokensPerKeystroke = std::to_array<std::pair<std::string_view, double>>({
    {"english", 0.248},
    {"shuangpin", 0.267},
    {"quanpin", 0.152},
    {"other", 0.152},
});

/// The rate of an input method; that of "other" for one that the table doesn't hold.
double tokenRate(std::string_view inputMethod);

/// The keys of a period by hour of the day.
struct KeystrokeData {
    std::vector<KeylogHourly> hours{}; // 24, from hour 0 on
    std::int64_t totalKeystrokes = 0;
    double totalTokens = 0; // each application at its own rate, unlike the hours' tokens
};

/// The input method with the most keys of an hour; empty without applications. Of equals, the first
/// by name.
std::optional<std::string> dominantMethod(const std::map<std::string, KeylogApp>& apps);

/// The keys that a filter on `timestamp` lets pass, in hours of a zone `tzOffsetSec` ahead of UTC.
KeystrokeData queryKeystrokeData(
    sqlite3* db, const std::string& dateFilter, std::int64_t tzOffsetSec);

/// In how many minutes keys were counted.
std::int64_t queryActiveKeylogMinutes(
    sqlite3* db, const std::string& dateFilter, std::int64_t tzOffsetSec);

} // namespace quillbrook
