#include "pages/figures/KeylogFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const TextWidth kFourPoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 4; };

KeylogHourly hour(std::int64_t number, std::map<std::string, KeylogApp> apps)
{
    std::int64_t keys = 0;
    for (const auto& [name, app] : apps) {
        keys += app.keystrokes;
    }
    return {.hour = number, .keystrokes = keys, .apps = std::move(apps)};
}

std::vector<std::string> valuesOf(const DashboardData& data)
{
    std::vector<std::string> values;
    for (const FigureContent& card : keylogCards(data)) {
        values.push_back(card.value);
    }
    return values;
}

std::vector<Mark> ofRole(std::vector<Mark> marks, MarkRole role)
{
    std::erase_if(marks, [role](const Mark& mark) { return mark.role != role; });
    return marks;
}

TEST(CategorizeMethod, TakesTheFirstThatMatches)
{
    EXPECT_EQ(categorizeMethod("Squirrel Shuangpin"), "shuangpin");
    EXPECT_EQ(categorizeMethod("English"), "english");
    EXPECT_EQ(categorizeMethod("英文双拼"), "english");
    EXPECT_EQ(categorizeMethod("小鹤双拼"), "shuangpin");
    EXPECT_EQ(categorizeMethod("简体拼音"), "quanpin");
    EXPECT_EQ(categorizeMethod("QUANPIN"), "quanpin");
    EXPECT_EQ(categorizeMethod("全拼"), "quanpin");
    EXPECT_EQ(categorizeMethod("ABC"), "other");
    EXPECT_EQ(categorizeMethod(""), "other");
}

TEST(InputMethodStats, AddUpByGroupAndSortByKeys)
{
    const std::vector hours{hour(9, {{"Editor", {5, "english"}}, {"Chat", {7, "双拼"}}}),
        hour(10, {{"Editor", {1, "English"}}, {"Web", {6, "ABC"}}})};
    EXPECT_THAT(inputMethodStats(hours),
        ElementsAre(InputMethodStat{"shuangpin", "双拼中文", 7, SystemColor::orange},
            // Of equal counts in the fixed order: English before the others.
            InputMethodStat{"english", "英文", 6, SystemColor::blue},
            InputMethodStat{"other", "其他", 6, SystemColor::gray}));
    EXPECT_THAT(inputMethodStats(std::vector{hour(9, {{"Editor", {0, "english"}}})}), IsEmpty());
}

TEST(AppStats, WeighKeysByTheRateOfTheirMethod)
{
    const std::vector hours{hour(9, {{"Editor", {1000, "english"}}, {"Chat", {1000, "shuangpin"}}}),
        hour(10, {{"Editor", {1000, "quanpin"}}})};
    const auto apps = appStats(hours);
    ASSERT_EQ(apps.size(), 2U);
    EXPECT_EQ(apps[0].app, "Editor");
    EXPECT_EQ(apps[0].keystrokes, 2000);
    EXPECT_DOUBLE_EQ(apps[0].tokens, 248 + 152);
    EXPECT_DOUBLE_EQ(apps[1].tokens, 267);
}

TEST(AppStats, TakeTheRateOfTheFirstMethodThatMatches)
{
    const auto tokensOf = [](std::string method) {
        return appStats(std::vector{hour(9, {{"Editor", {1000, std::move(method)}}})})[0].tokens;
    };
    for (const char* method : {"English", "英文", "英文双拼"}) {
        EXPECT_DOUBLE_EQ(tokensOf(method), 248) << method;
    }
    for (const char* method : {"Squirrel Shuangpin", "小鹤双拼"}) {
        EXPECT_DOUBLE_EQ(tokensOf(method), 267) << method;
    }
    for (const char* method : {"quanpin", "全拼", "简体拼音", "ABC", ""}) {
        EXPECT_DOUBLE_EQ(tokensOf(method), 152) << method;
    }
}

TEST(KeylogSums, StayAtTheGreatestNumber)
{
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    KeylogHourly full{.hour = 9, .keystrokes = kMost};
    full.apps = {{"Editor", {kMost, "english"}}, {"Chat", {5, "english"}}};
    const std::vector hours{full, full};
    EXPECT_EQ(inputMethodStats(hours).at(0).keystrokes, kMost);
    EXPECT_EQ(appStats(hours).at(0).keystrokes, kMost);
    EXPECT_EQ(appStats(hours).at(1).keystrokes, 10);
}

TEST(AppStats, RankTheFirstTen)
{
    std::map<std::string, KeylogApp> apps;
    for (int i = 0; i < 11; ++i) {
        apps["App" + std::to_string(i)] = {100 - i, "english"};
    }
    const auto stats = appStats(std::vector{hour(9, apps)});
    EXPECT_EQ(stats.size(), 11U);
    ASSERT_EQ(rankedApps(stats).size(), 10U);
    EXPECT_EQ(rankedApps(stats).back().app, "App9");
}

TEST(TokStr, ChangesItsFormAtTheBorders)
{
    EXPECT_EQ(tokStr(0), "0");
    EXPECT_EQ(tokStr(999.4), "999");
    EXPECT_EQ(tokStr(1000), "1.0k");
    EXPECT_EQ(tokStr(9999), "10.0k");
    EXPECT_EQ(tokStr(10000), "1.0万");
    EXPECT_EQ(tokLabel(999.4), "999");
    EXPECT_EQ(tokLabel(1000), "1.0k");
    EXPECT_EQ(tokLabel(123456), "123.5k");
}

TEST(KeylogCards, ShowZerosForNothing)
{
    EXPECT_THAT(valuesOf({}), ElementsAre("0", "0", "--", "0 h"));
    EXPECT_THAT(valuesOf({.tpm = 12}), ElementsAre("0", "0", "--", "0 h"));
}

TEST(KeylogCards, ShowTheirFigures)
{
    DashboardData data{.keylogHourly = {hour(9, {{"Editor", {3, "english"}}}), hour(10, {})},
        .totalKeylogKeystrokes = 12345,
        .totalKeylogTokens = 3061.6,
        .totalActiveKeylogMinutes = 1,
        .tpm = 20.25};
    EXPECT_THAT(keylogCards(data),
        ElementsAre(FigureContent{"hand.point.up.braille", SystemColor::purple, "12345", "击键"},
            FigureContent{"text.word.spacing", SystemColor::cyan, "3.1k", "Tokens"},
            FigureContent{"bolt.fill", SystemColor::green, "20.2/min", "TPM"},
            FigureContent{"keyboard", SystemColor::blue, "1 h", "会话"}));
}

TEST(HourlyBarMarks, AreAsHighAsTheirShareOfTheMost)
{
    const std::vector hours{hour(0, {{"a", {5000, ""}}}), hour(1, {{"a", {1, ""}}}), hour(2, {}),
        hour(3, {{"a", {2500, ""}}})};
    const auto marks = hourlyBarMarks(hours, 482, kFourPoints);
    const auto bars = ofRole(marks, MarkRole::mark);
    ASSERT_EQ(bars.size(), 4U);
    EXPECT_EQ(bounds(bars[0].shape), (Rect{0, 12, 18, 140}));
    EXPECT_EQ(bounds(bars[1].shape), (Rect{19, 150, 18, 2})); // never lower, however few
    EXPECT_EQ(bounds(bars[2].shape), (Rect{38, 152, 18, 0}));
    EXPECT_EQ(bounds(bars[3].shape), (Rect{57, 82, 18, 70}));
    EXPECT_EQ(bars[0].name, "0");
    EXPECT_EQ(bars[0].value, "5000");
    EXPECT_EQ(bars[0].fills, std::vector<Tint>{{SystemColor::orange}});
    const auto texts = ofRole(marks, MarkRole::text);
    EXPECT_EQ(texts[0].name, "5000");
    EXPECT_EQ(texts[1].name, "1");
    EXPECT_EQ(bounds(texts[1].shape), (Rect{26, 140.25, 4, 8.75}));
    EXPECT_EQ(texts[2].name, "2500");
    EXPECT_EQ(texts[3].name, "0"); // the hours below
    EXPECT_EQ(texts.back().name, "22");
    EXPECT_EQ(texts.size(), 3U + 12U);
}

TEST(HourlyBarMarks, StandBeforeFiveLines)
{
    const auto marks = hourlyBarMarks(std::vector{hour(0, {{"a", {1, ""}}})}, 482, kFourPoints);
    for (std::size_t step = 1; step <= 5; ++step) {
        const double y = 152 * static_cast<double>(step) / 5 - 0.25;
        EXPECT_EQ(marks[step - 1], lineMark({0, y}, {482, y}, {SystemColor::gray, 0.15}, 0.5));
    }
    EXPECT_EQ(marks[5].shape, Shape(Box{{0, 12, 18, 140}, 2}));
}

TEST(HourlyBarMarks, LeaveACountOutThatHasNoRoom)
{
    std::vector<KeylogHourly> hours;
    for (int i = 0; i < 24; ++i) {
        hours.push_back(hour(i, {{"a", {12345, ""}}}));
    }
    const auto texts = ofRole(hourlyBarMarks(hours, 242, kFourPoints), MarkRole::text);
    EXPECT_EQ(texts[0].name, "12345");
    const auto counts = std::count_if(
        texts.begin(), texts.end(), [](const Mark& mark) { return mark.name == "12345"; });
    EXPECT_LT(counts, 24);
    EXPECT_GT(counts, 6);
}

TEST(HourlyBarMarks, KeepCountsOfOneHeightApart)
{
    std::vector<KeylogHourly> hours(24);
    for (int i = 0; i < 24; i += 2) {
        hours[static_cast<std::size_t>(i)] = hour(i, {{"a", {123456, ""}}}); // 24 wide
    }
    for (double width = 240; width < 700; width += 1) {
        std::vector<Rect> counts;
        for (const Mark& mark : ofRole(hourlyBarMarks(hours, width, kFourPoints), MarkRole::text)) {
            if (mark.name == "123456") {
                counts.push_back(bounds(mark.shape));
            }
        }
        ASSERT_GT(counts.size(), 3U);
        for (std::size_t i = 1; i < counts.size(); ++i) {
            ASSERT_GE(counts[i].x - right(counts[i - 1]), 2) << width;
        }
    }
}

TEST(HourlyBarMarks, AreAtLeastFourWide)
{
    const auto bars
        = ofRole(hourlyBarMarks(std::vector{hour(0, {})}, 50, kFourPoints), MarkRole::mark);
    EXPECT_EQ(bounds(bars[0].shape).width, 4);
}

std::vector<std::string> ringTexts(const std::vector<InputMethodStat>& stats)
{
    std::vector<std::string> texts;
    for (const Mark& mark : inputMethodMarks(stats, 148)) {
        for (const TextLine& line : mark.texts) {
            if (line.isOnColor) {
                texts.push_back(line.text);
            }
        }
    }
    return texts;
}

TEST(InputMethodMarks, TellTheSharesAboveEightPercent)
{
    EXPECT_THAT(ringTexts({{"english", "英文", 92, SystemColor::blue},
                    {"other", "其他", 8, SystemColor::gray}}),
        ElementsAre("92%"));
    EXPECT_THAT(ringTexts({{"english", "英文", 919, SystemColor::blue},
                    {"other", "其他", 81, SystemColor::gray}}),
        ElementsAre("92%", "8%"));
    EXPECT_THAT(ringTexts({{"english", "英文", 3, SystemColor::blue}}), ElementsAre("100%"));
}

TEST(InputMethodMarks, AreASectorForEachGroup)
{
    const auto sectors = ofRole(
        inputMethodMarks(std::vector<InputMethodStat>{{"english", "英文", 3, SystemColor::blue},
                             {"other", "其他", 1, SystemColor::gray}},
            148),
        MarkRole::mark);
    ASSERT_EQ(sectors.size(), 2U);
    EXPECT_EQ(sectors[0].name, "英文");
    EXPECT_EQ(sectors[0].value, "3");
    EXPECT_EQ(sectors[0].fills, std::vector<Tint>{{SystemColor::blue}});
    EXPECT_EQ(sectors[1].help, "其他: 1 次 (25%)");
}

TEST(InputMethodMarks, AreARingOpenToALittleMoreThanHalf)
{
    const std::vector<InputMethodStat> alone{{"english", "英文", 3, SystemColor::blue}};
    const Path ring = std::get<Path>(inputMethodMarks(alone, 180)[0].shape);
    std::vector<Point> begins; // of the outer and the inner edge
    for (const PathStep& step : ring) {
        if (step.kind == PathStep::Kind::move) {
            begins.push_back(step.to);
        }
    }
    EXPECT_THAT(begins, ElementsAre(Point{90, 0}, Point{90, 70 - 0.55 * 70}));
}

TEST(InputMethodMarks, NameTheGroupsUnderTheRing)
{
    const std::vector<InputMethodStat> stats{
        {"english", "英文", 3, SystemColor::blue}, {"other", "其他", 0, SystemColor::gray}};
    const auto marks = inputMethodMarks(stats, 180);
    EXPECT_EQ(bounds(marks[0].shape).width, 140);
    EXPECT_DOUBLE_EQ(center(bounds(marks[0].shape)).x, 90);
    ASSERT_EQ(marks.size(), 3U + 4U); // two sectors, one percentage, two lines
    EXPECT_EQ(marks[3], (Mark{.shape = Circle{{4, 154.25}, 4}, .fills = {{SystemColor::blue}}}));
    EXPECT_EQ(marks[4],
        textMark({.place = {14, 148, 166, 12.5},
            .text = "英文",
            .face = {.pixels = 10},
            .tint = secondaryTint()}));
    EXPECT_EQ(marks[5], (Mark{.shape = Circle{{4, 170.75}, 4}, .fills = {{SystemColor::gray}}}));
    EXPECT_EQ(bottom(bounds(marks[6].shape)), inputMethodHeight(2));
}

TEST(AppTokenMarks, FollowTheRankInColour)
{
    EXPECT_EQ(appTokenHeight(10), 360);
    EXPECT_EQ(appTokenHeight(3), 140);
    EXPECT_EQ(appTokenHeight(4), 168);
    const std::vector<AppTokens> apps{{"Editor", 5000, 1240}, {"Chat", 100, 26.7}};
    const auto bars = ofRole(appTokenMarks(apps, {400, 140}, kFourPoints), MarkRole::mark);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[0].name, "Editor");
    EXPECT_EQ(bars[0].value, "1240");
    EXPECT_EQ(bars[0].fills, std::vector<Tint>{{SystemColor::blue}});
    EXPECT_EQ(bars[1].value, "26.7");
    EXPECT_EQ(bars[1].fills, std::vector<Tint>{{SystemColor::green}});
    std::vector<std::string> texts;
    for (const Mark& mark : ofRole(appTokenMarks(apps, {400, 140}, kFourPoints), MarkRole::text)) {
        texts.push_back(mark.name);
    }
    EXPECT_THAT(texts, testing::IsSupersetOf({"Editor", "Chat", "1.2k", "27"}));
}

} // namespace
} // namespace quillbrook
