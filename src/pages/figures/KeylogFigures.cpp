#include "pages/figures/KeylogFigures.h"

#include "base/Text.h"
#include "base/WholeNumber.h"
#include "pages/figures/AppPalette.h"
#include "pages/marks/BarMarks.h"
#include "pages/marks/RingMarks.h"
#include "report/KeystrokeReports.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::size_t kRankedApps = 10;
constexpr double kRingTextShare = 0.08;
constexpr double kRingHeight = 140;
constexpr double kUnderRing = 8;
constexpr double kGroupSpacing = 4;
constexpr double kGroupDot = 8;
constexpr double kBehindDot = 6;
constexpr TextFace kGroupFace{TextFamily::system, 10};

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// Tokens for a key. Unlike among the groups, all that is neither English nor double pinyin counts
/// alike.
double rateOf(std::string_view inputMethod)
{
    const std::string method = asciiLowered(inputMethod);
    if (contains(method, "english") || contains(method, "英文")) {
        return tokenRate("english");
    }
    return tokenRate(
        contains(method, "shuangpin") || contains(method, "双拼") ? "shuangpin" : "other");
}

std::int64_t hoursWithKeys(std::span<const KeylogHourly> hourly)
{
    return std::count_if(hourly.begin(), hourly.end(),
        [](const KeylogHourly& hour) { return hour.keystrokes >= 1; });
}

/// The sizes and opacities of the bars by hour.
constexpr double kBarsHeight = 140;
constexpr double kTopMargin = 12;
constexpr double kBarGap = 1;
constexpr int kHours = 24;
constexpr int kGridSteps = 5;
constexpr double kGridLine = 0.5;
constexpr double kCountSpacing = 2; // between two counts of one height
constexpr TextFace kCountFace{TextFamily::monospaced, 7};
constexpr double kCountGap = 1;

double barWidth(double width)
{
    return std::max((width - 2) / kHours - 2, 4.0);
}

double barHeight(std::int64_t keystrokes, std::int64_t most)
{
    if (keystrokes < 1) {
        return 0;
    }
    const double ratio = static_cast<double>(keystrokes) / static_cast<double>(most);
    return std::max(ratio * kBarsHeight, 2.0);
}

std::int64_t mostKeys(std::span<const KeylogHourly> hourly)
{
    std::int64_t most = 1;
    for (const KeylogHourly& hour : hourly) {
        most = std::max(most, hour.keystrokes);
    }
    return most;
}

Mark hourBar(const KeylogHourly& hour, const Rect& rect)
{
    const std::string count = std::to_string(hour.keystrokes);
    return {.shape = Box{rect, 2},
        .fills = {{SystemColor::orange}},
        .role = MarkRole::mark,
        .name = std::to_string(hour.hour),
        .value = count,
        .help = std::to_string(hour.hour) + " 时: " + count + " 次"};
}

/// Where a bar's count stands: above it, in its middle, within the picture.
Rect countPlace(const Rect& bar, double textWidth, double width)
{
    const double rightmost = std::max(width - textWidth, 0.0);
    const double height = lineHeight(kCountFace);
    return {std::clamp(center(bar).x - textWidth / 2, 0.0, rightmost), bar.y - kCountGap - height,
        textWidth, height};
}

bool overlap(const Rect& a, const Rect& b)
{
    return a.x < right(b) && b.x < right(a) && a.y < bottom(b) && b.y < bottom(a);
}

Mark smallText(const Rect& place, std::string text)
{
    return textMark({.place = place,
        .text = std::move(text),
        .face = kCountFace,
        .tint = secondaryTint(),
        .alignment = TextAlignment::center});
}

/// What a colour of the ring stands for: a dot and the group's name.
void appendGroup(std::vector<Mark>& marks, const InputMethodStat& stat, const Rect& line)
{
    marks.push_back({.shape = Circle{{line.x + kGroupDot / 2, center(line).y}, kGroupDot / 2},
        .fills = {{stat.color}}});
    const double indent = kGroupDot + kBehindDot;
    marks.push_back(textMark({.place = {line.x + indent, line.y, line.width - indent, line.height},
        .text = std::string(stat.label),
        .face = kGroupFace,
        .tint = secondaryTint()}));
}

} // namespace

std::string_view categorizeMethod(std::string_view inputMethod)
{
    const std::string method = asciiLowered(inputMethod);
    if (contains(method, "english") || contains(method, "英文")) {
        return "english";
    }
    if (contains(method, "shuangpin") || contains(method, "双拼")) {
        return "shuangpin";
    }
    if (contains(method, "quanpin") || contains(method, "全拼") || contains(method, "拼音")) {
        return "quanpin";
    }
    return "other";
}

std::vector<InputMethodStat> inputMethodStats(std::span<const KeylogHourly> hourly)
{
    std::vector<InputMethodStat> stats{
        {"shuangpin", "双拼中文", 0, SystemColor::orange},
        {"english", "英文", 0, SystemColor::blue},
        {"quanpin", "全拼中文", 0, SystemColor::green},
        {"other", "其他", 0, SystemColor::gray},
    };
    for (const KeylogHourly& hour : hourly) {
        for (const auto& [name, app] : hour.apps) {
            const std::string_view method = categorizeMethod(app.inputMethod);
            std::int64_t& keystrokes
                = std::find_if(stats.begin(), stats.end(), [method](const InputMethodStat& stat) {
                      return stat.method == method;
                  })->keystrokes;
            keystrokes = boundedSum(keystrokes, app.keystrokes);
        }
    }
    std::erase_if(stats, [](const InputMethodStat& stat) { return stat.keystrokes < 1; });
    std::stable_sort(stats.begin(), stats.end(),
        [](const auto& a, const auto& b) { return a.keystrokes > b.keystrokes; });
    return stats;
}

std::vector<AppTokens> appStats(std::span<const KeylogHourly> hourly)
{
    std::map<std::string, AppTokens> byName;
    for (const KeylogHourly& hour : hourly) {
        for (const auto& [name, app] : hour.apps) {
            AppTokens& sum = byName[name];
            sum.app = name;
            sum.keystrokes = boundedSum(sum.keystrokes, app.keystrokes);
            sum.tokens += static_cast<double>(app.keystrokes) * rateOf(app.inputMethod);
        }
    }
    std::vector<AppTokens> apps;
    for (auto& [name, app] : byName) {
        apps.push_back(std::move(app));
    }
    std::stable_sort(
        apps.begin(), apps.end(), [](const auto& a, const auto& b) { return a.tokens > b.tokens; });
    return apps;
}

std::vector<AppTokens> rankedApps(std::vector<AppTokens> apps)
{
    apps.resize(std::min(apps.size(), kRankedApps));
    return apps;
}

std::string tokStr(double totalTokens)
{
    if (totalTokens >= 10000) {
        return fixedText(totalTokens / 10000, 1) + "万";
    }
    return tokLabel(totalTokens);
}

std::string tokLabel(double tokens)
{
    return tokens >= 1000 ? fixedText(tokens / 1000, 1) + "k" : fixedText(tokens, 0);
}

std::array<FigureContent, 4> keylogCards(const DashboardData& data)
{
    const bool hasMinutes = data.totalActiveKeylogMinutes >= 1;
    return {{
        {"hand.point.up.braille", SystemColor::purple, std::to_string(data.totalKeylogKeystrokes),
            "击键"},
        {"text.word.spacing", SystemColor::cyan, tokStr(data.totalKeylogTokens), "Tokens"},
        {"bolt.fill", SystemColor::green, hasMinutes ? fixedText(data.tpm, 1) + "/min" : "--",
            "TPM"},
        // Named after sessions, though it counts the hours with typing.
        {"keyboard", SystemColor::blue, std::to_string(hoursWithKeys(data.keylogHourly)) + " h",
            "会话"},
    }};
}

std::vector<Mark> hourlyBarMarks(
    std::span<const KeylogHourly> hourly, double width, const TextWidth& textWidth)
{
    std::vector<Mark> marks;
    const double base = kTopMargin + kBarsHeight;
    for (int step = 1; step <= kGridSteps; ++step) {
        const double y = base * step / kGridSteps - kGridLine / 2;
        marks.push_back(lineMark({0, y}, {width, y}, {SystemColor::gray, 0.15}, kGridLine));
    }
    const std::int64_t most = mostKeys(hourly);
    std::vector<Rect> taken;
    for (const KeylogHourly& hour : hourly) {
        const double height = barHeight(hour.keystrokes, most);
        const double thickness = barWidth(width);
        const double x = static_cast<double>(taken.size()) * (thickness + kBarGap);
        taken.push_back({x, base - height, thickness, height});
        marks.push_back(hourBar(hour, taken.back()));
    }
    for (std::size_t i = 0; i < hourly.size(); ++i) {
        if (hourly[i].keystrokes < 1) {
            continue;
        }
        const std::string count = std::to_string(hourly[i].keystrokes);
        const Rect place = countPlace(taken[i], textWidth(count, kCountFace), width);
        if (std::none_of(taken.begin(), taken.end(),
                [&place](const Rect& other) { return overlap(place, other); })) {
            taken.push_back(
                {place.x - kCountSpacing, place.y, place.width + 2 * kCountSpacing, place.height});
            marks.push_back(smallText(place, count));
        }
    }
    const double cell = (width - (kHours - 1) * kBarGap) / kHours;
    for (int hour = 0; hour < kHours; hour += 2) {
        marks.push_back(smallText(
            {hour * (cell + kBarGap), base, cell, kHourlyBarHeight - base}, std::to_string(hour)));
    }
    return marks;
}

double inputMethodHeight(std::size_t groups)
{
    const double lines = static_cast<double>(groups) * (lineHeight(kGroupFace) + kGroupSpacing);
    return kRingHeight + kUnderRing + lines - kGroupSpacing;
}

std::vector<Mark> inputMethodMarks(std::span<const InputMethodStat> stats, double width)
{
    double total = 0;
    for (const InputMethodStat& stat : stats) {
        total += static_cast<double>(stat.keystrokes);
    }
    RingChart chart;
    for (const InputMethodStat& stat : stats) {
        const double share = total < 1 ? 0 : static_cast<double>(stat.keystrokes) / total;
        const std::string percent = fixedText(share * 100, 0) + "%";
        const std::string count = std::to_string(stat.keystrokes);
        const std::string label(stat.label);
        chart.sectors.push_back({.amount = static_cast<double>(stat.keystrokes),
            .text = share > kRingTextShare ? percent : std::string(),
            .tint = {stat.color},
            .datum = {.name = label,
                .value = count,
                .help = label + ": " + count + " 次 (" + percent + ")"}});
    }
    std::vector<Mark> marks = ringMarks(chart, {width, kRingHeight});
    Rect line{0, kRingHeight + kUnderRing, width, lineHeight(kGroupFace)};
    for (const InputMethodStat& stat : stats) {
        appendGroup(marks, stat, line);
        line.y += line.height + kGroupSpacing;
    }
    return marks;
}

double appTokenHeight(std::size_t ranked)
{
    return std::max(static_cast<double>(ranked) * 32 + 40, 140.0);
}

std::vector<Mark> appTokenMarks(
    std::span<const AppTokens> ranked, Size size, const TextWidth& textWidth)
{
    HorizontalBarChart chart;
    for (const AppTokens& app : ranked) {
        chart.bars.push_back({.label = app.app,
            .amount = app.tokens,
            .annotation = tokLabel(app.tokens),
            .tint = {paletteColor(chart.bars.size())},
            .datum = {.name = app.app,
                .value = shortestText(app.tokens),
                .help = app.app + ": " + tokLabel(app.tokens) + " tokens"}});
    }
    return horizontalBarMarks(chart, size, textWidth);
}

std::array<TokenInfo, 4> tokenInfos()
{
    const auto rate = [](std::string_view inputMethod) {
        return filled("1 击键 ≈ {} token", {shortestText(tokenRate(inputMethod))});
    };
    return {{
        {"英文", rate("english"), "英文输入法每个字符约 0.25 token，按键一一对应"},
        {"双拼", rate("shuangpin"), "双拼中文输入需2-3键产出一个汉字，单键效率较高"},
        {"其他", rate("other"), "全拼等输入法效率约为英文的 60%"},
        {"TPM", "每分钟输入 Token 数",
            "TPM = 时间内总 Token 数 ÷ 有击键活动的分钟数，反映实际输入效率，跨输入法可直接比较"},
    }};
}

} // namespace quillbrook
