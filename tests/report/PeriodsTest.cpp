#include "report/Periods.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

template <typename T>
std::vector<std::string> rawValues()
{
    std::vector<std::string> texts;
    for (const auto& each : allCases<T>) {
        EXPECT_EQ(rawValue(each.value), each.rawValue);
        EXPECT_EQ(fromRawValue<T>(each.rawValue), each.value);
        texts.emplace_back(each.rawValue);
    }
    return texts;
}

TEST(Periods, AreCalledWhatTheyAreStoredAs)
{
    EXPECT_THAT(rawValues<NavTab>(),
        ElementsAre("Today", "Past", "Habit", "Tokens", "Alerts", "关于", "Future", "Sessions",
            "Idles", "Focus"));
    EXPECT_THAT(
        rawValues<HistoryPeriod>(), ElementsAre("今日", "昨日", "本周", "本月", "本年", "全部"));
    EXPECT_THAT(rawValues<KeylogPeriod>(), ElementsAre("今天", "本周", "本月"));
    EXPECT_THAT(rawValues<TodayPeriod>(), ElementsAre("今日", "昨日"));
    EXPECT_THAT(rawValues<HabitPeriod>(), ElementsAre("今日", "昨日", "本周", "本月"));
    EXPECT_THAT(rawValues<SessionsPeriod>(), ElementsAre("1小时", "6小时", "今日", "昨日"));
    EXPECT_THAT(rawValues<IdlesPeriod>(), ElementsAre("1小时", "6小时", "今日", "昨日"));
    EXPECT_THAT(rawValues<FocusPeriod>(), ElementsAre("今日", "昨日", "本周", "本月", "全部"));
    EXPECT_THAT(rawValues<AlertsPeriod>(), ElementsAre("过去7天", "过去30天", "全部"));
}

TEST(Periods, AnUnknownTextIsNoCase)
{
    EXPECT_EQ(fromRawValue<NavTab>("today"), std::nullopt);
    EXPECT_EQ(fromRawValue<KeylogPeriod>("今日"), std::nullopt);
    EXPECT_EQ(fromRawValue<HistoryPeriod>(""), std::nullopt);
}

TEST(Periods, AContextIsNineBytes)
{
    EXPECT_EQ(sizeof(RefreshContext), 9U);
}

} // namespace
} // namespace quillbrook
