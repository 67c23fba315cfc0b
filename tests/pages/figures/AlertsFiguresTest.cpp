#include "pages/figures/AlertsFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kMidnight = 1767196800; // 2026-01-01 00:00 in UTC+8
constexpr double kDay = 86400;

AlertRecord alertAt(
    Date timestamp, std::string type = "high_load", std::string severity = "warning")
{
    return {.timestamp = timestamp, .alertType = std::move(type), .severity = std::move(severity)};
}

std::vector<std::string> dates(const std::vector<AlertDay>& days)
{
    std::vector<std::string> texts;
    for (const AlertDay& day : days) {
        texts.push_back(day.date);
    }
    return texts;
}

std::vector<std::string> types(const AlertDay& day)
{
    std::vector<std::string> texts;
    for (const AlertTimelineRow& row : day.alertGroups) {
        texts.push_back(row.type);
    }
    return texts;
}

TEST(AlertsGrouped, HasNoDaysWithoutAlerts)
{
    EXPECT_THAT(grouped({}), IsEmpty());
}

TEST(AlertsGrouped, PutsAnAlertIntoItsDayOfUtc8)
{
    const std::vector<AlertRecord> alerts{alertAt(kMidnight), alertAt(kMidnight - 0.5)};
    EXPECT_THAT(grouped(alerts),
        ElementsAre(AlertDay{"12-31", {{"high_load", "warning", {kMidnight - 0.5}}}},
            AlertDay{"01-01", {{"high_load", "warning", {kMidnight}}}}));
}

TEST(AlertsGrouped, PutsDecemberAboveJanuaryWhateverTheYear)
{
    const std::vector<AlertRecord> alerts{alertAt(kMidnight + 30 * kDay), // 01-31
        alertAt(kMidnight + kDay), alertAt(kMidnight - kDay)};
    EXPECT_THAT(dates(grouped(alerts)), ElementsAre("12-31", "01-31", "01-02"));
}

TEST(AlertsGrouped, PutsTheSameDateOfSeveralYearsIntoOneDay)
{
    const std::vector<AlertRecord> alerts{alertAt(kMidnight), alertAt(kMidnight - 365 * kDay + 60)};
    EXPECT_THAT(grouped(alerts),
        ElementsAre(AlertDay{
            "01-01", {{"high_load", "warning", {kMidnight - 365 * kDay + 60, kMidnight}}}}));
}

TEST(AlertsGrouped, TakesTheSeverityOfTheFirstRecordAndSortsTheTimes)
{
    const std::vector<AlertRecord> alerts{alertAt(kMidnight + 20, "high_swap", "critical"),
        alertAt(kMidnight + 30, "high_swap", "warning"),
        alertAt(kMidnight + 10, "high_swap", "warning")};
    EXPECT_THAT(grouped(alerts),
        ElementsAre(AlertDay{"01-01",
            {{"high_swap", "critical", {kMidnight + 10, kMidnight + 20, kMidnight + 30}}}}));
}

TEST(AlertsGrouped, PutsCriticalKindsFirst)
{
    const std::vector<AlertRecord> alerts{alertAt(kMidnight, "high_load"),
        alertAt(kMidnight, "critical_load", "critical"), alertAt(kMidnight, "high_memory"),
        alertAt(kMidnight, "high_swap", "critical")};
    EXPECT_THAT(types(grouped(alerts)[0]),
        ElementsAre("critical_load", "high_swap", "high_load", "high_memory"));
}

TEST(AlertsGrouped, TakesTimesThatAreNoneOfTheCalendar)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::vector<AlertRecord> alerts{
        alertAt(kInfinity), alertAt(-kInfinity), alertAt(std::nan("")), alertAt(1e300)};
    EXPECT_THAT(dates(grouped(alerts)), ElementsAre("12-31", "01-01"));
}

TEST(AlertTimelineRowTest, IsAWarningBeforeItsFirstRecord)
{
    EXPECT_EQ(AlertTimelineRow().severity, "warning");
}

TEST(AlertDayTotal, CountsAllKinds)
{
    EXPECT_EQ(dayTotal({}), "0 次告警");
    EXPECT_EQ(dayTotal({"01-01", {{.times = {1, 2}}, {.times = {3}}}}), "3 次告警");
}

TEST(AlertTodayDateStr, IsTheDayOfUtc8)
{
    EXPECT_EQ(todayDateStr(kMidnight - 1), "12-31");
    EXPECT_EQ(todayDateStr(kMidnight), "01-01");
}

TEST(AlertHourTicks, AreTheEvenHours)
{
    ASSERT_EQ(hourTicks.size(), 12u);
    EXPECT_EQ(hourTicks[0], (HourTick{0, "00"}));
    EXPECT_EQ(hourTicks[4], (HourTick{8 / 24.0, "08"}));
    EXPECT_EQ(hourTicks[11], (HourTick{22 / 24.0, "22"}));
}

TEST(AlertTimeFraction, CountsWholeSecondsOfTheDay)
{
    EXPECT_EQ(timeFraction(kMidnight), 0);
    EXPECT_EQ(timeFraction(kMidnight + 6 * 3600), 0.25);
    EXPECT_EQ(timeFraction(kMidnight + kDay - 1), 86399 / 86400.0);
    EXPECT_EQ(timeFraction(kMidnight + kDay - 0.25), 86399 / 86400.0);
    EXPECT_EQ(timeFraction(-28800 - 1), 86399 / 86400.0); // before 1970
}

TEST(AlertTimeFraction, StaysWithinTheDay)
{
    for (const double time : {1e300, -1e300, std::nan("")}) {
        EXPECT_GE(timeFraction(time), 0);
        EXPECT_LT(timeFraction(time), 1);
    }
}

TEST(AlertTimeString, IsHourAndMinute)
{
    EXPECT_EQ(timeString(kMidnight + 9 * 3600 + 5 * 60 + 59), "09:05");
}

TEST(AlertLabelIndicesToShow, KeepFiftyFivePointsFromTheLastOneShown)
{
    EXPECT_THAT(labelIndicesToShow({}, 100), IsEmpty());
    const std::vector<double> fractions{0.25, 0.304, 0.305, 0.359, 0.36};
    EXPECT_THAT(labelIndicesToShow(fractions, 1000), ElementsAre(0, 2, 4));
    EXPECT_THAT(labelIndicesToShow(fractions, 0), ElementsAre(0));
}

TEST(AlertLabelIndicesToShow, LeaveOutTenMinutesUntilThereIsRoom)
{
    std::vector<double> everyTenMinutes;
    for (int place = 0; place < 13; ++place) {
        everyTenMinutes.push_back(place / 144.0);
    }
    EXPECT_THAT(labelIndicesToShow(everyTenMinutes, 1440), ElementsAre(0, 6, 12));
}

TEST(AlertTypeLabel, NamesTheKnownKindsAndLeavesOthers)
{
    EXPECT_EQ(typeLabel("high_load"), "高负载");
    EXPECT_EQ(typeLabel("critical_load"), "极高负载");
    EXPECT_EQ(typeLabel("high_memory"), "内存不足");
    EXPECT_EQ(typeLabel("high_swap"), "Swap 不足");
    EXPECT_EQ(typeLabel("windowserver_high"), "图形异常");
    EXPECT_EQ(typeLabel("windowserver_crash"), "图形崩溃");
    EXPECT_EQ(typeLabel("disk_full"), "disk_full");
    EXPECT_EQ(typeLabel(""), "");
}

TEST(AlertSeverityColor, IsRedForCriticalAlone)
{
    EXPECT_EQ(severityColor("critical"), SystemColor::red);
    EXPECT_EQ(severityColor("warning"), SystemColor::orange);
    EXPECT_EQ(severityColor("Critical"), SystemColor::orange);
    EXPECT_EQ(severityColor(""), SystemColor::orange);
}

} // namespace
} // namespace quillbrook
