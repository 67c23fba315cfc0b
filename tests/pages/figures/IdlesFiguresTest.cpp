#include "pages/figures/IdlesFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr double kNow = 1767240000; // 2026-01-01 12:00 in UTC+8

const LocalCalendar kCalendar{.now = kNow, .secondsFromUtc = [](double) { return 28800; }};

IdleRecord idle(std::int64_t rowId, Date startedAt, double durationSec)
{
    return {.rowId = rowId,
        .startedAt = startedAt,
        .endedAt = startedAt + durationSec,
        .durationSec = durationSec};
}

IdleRecord open(std::int64_t rowId, Date startedAt)
{
    return {.rowId = rowId, .startedAt = startedAt};
}

std::vector<std::int64_t> rowIds(const std::vector<IdleRecord>& idles)
{
    std::vector<std::int64_t> ids;
    for (const IdleRecord& each : idles) {
        ids.push_back(each.rowId);
    }
    return ids;
}

TEST(SortedIdles, PutsOpenPeriodsOnTop)
{
    EXPECT_THAT(rowIds(sortedIdles({idle(1, 20, 5), open(2, 10), idle(3, 30, 5), open(4, 10)})),
        ElementsAre(2, 4, 3, 1));
}

TEST(TotalDuration, LeavesOpenPeriodsOut)
{
    const std::vector<IdleRecord> idles{idle(1, 0, 100), open(2, 0), idle(3, 0, 0.5)};
    EXPECT_EQ(totalDuration(idles), 100.5);
    EXPECT_EQ(totalDuration({}), 0);
}

TEST(TotalDurationText, ChangesItsFormAtAMinuteAndAnHour)
{
    const auto textOf
        = [](double seconds) { return totalDurationText(std::vector{idle(1, 0, seconds)}); };
    EXPECT_EQ(totalDurationText({}), "0秒");
    EXPECT_EQ(textOf(59), "59秒");
    EXPECT_EQ(textOf(60), "1.0分钟");
    EXPECT_EQ(textOf(3599), "60.0分钟");
    EXPECT_EQ(textOf(3600), "1.00小时");
    EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "0秒");
}

TEST(IdleCountText, CountsRecords)
{
    EXPECT_EQ(idleCountText(3), "3 条空闲记录");
}

TEST(IdleColumns, StandInTheirOrder)
{
    EXPECT_THAT(idleColumns(),
        ElementsAre(TableColumn{.title = "#",
                        .width = 36,
                        .alignment = TextAlignment::trailing,
                        .namesTheRow = true},
            TableColumn{"日期", 45}, TableColumn{"开始", 70}, TableColumn{"结束", 70},
            TableColumn{"时长", 80, TextAlignment::trailing},
            TableColumn{"来源", 55, TextAlignment::center},
            TableColumn{"状态", 60, TextAlignment::center}));
}

std::vector<TableCell> cellsOf(const IdleRecord& record)
{
    std::vector<TableCell> cells;
    for (std::size_t column = 0; column < idleColumns().size(); ++column) {
        cells.push_back(idleCell({record}, static_cast<int>(column), kCalendar));
    }
    return cells;
}

constexpr TextFace kSmall{.pixels = 10};
constexpr TextFace kFigure{TextFamily::monospaced, 10};
constexpr TextFace kWord{.pixels = 10, .weight = TextWeight::medium};

TEST(IdleCells, ShowAnEndedPeriod)
{
    EXPECT_THAT(cellsOf(idle(42, kNow, 600)),
        ElementsAre(TableCell{"42", kSmall, secondaryTint(0.6)},
            TableCell{"今天", kSmall, secondaryTint()},
            TableCell{"12:00:00", kFigure, secondaryTint()},
            TableCell{"12:10:00", kFigure, secondaryTint()},
            TableCell{"10.0分钟", kFigure, primaryTint()},
            TableCell{"HID超时", kWord, {SystemColor::orange}},
            TableCell{"已结束", kWord, secondaryTint(0.6), TableDot{6, secondaryTint(0.4)}}));
}

TEST(IdleCells, ShowAnOpenPeriod)
{
    const auto cells = cellsOf(open(7, kNow - 2 * 86400));
    EXPECT_EQ(cells[1], (TableCell{"12/30", kSmall, {SystemColor::orange, 0.6}}));
    EXPECT_EQ(cells[3], (TableCell{"--:--:--", kFigure, secondaryTint(0.4)}));
    EXPECT_EQ(cells[4].text, "0秒");
    EXPECT_EQ(cells[6],
        (TableCell{"进行中", kWord, {SystemColor::green}, TableDot{6, {SystemColor::green}}}));
}

TEST(IdleCells, NameTheSource)
{
    const auto cellOf = [](std::int64_t sourceType) {
        return idleCell({IdleRecord{.sourceType = sourceType}}, 5, kCalendar);
    };
    EXPECT_EQ(cellOf(2), (TableCell{"睡眠", kWord, {SystemColor::blue}}));
    EXPECT_EQ(cellOf(3), (TableCell{"锁屏", kWord, {SystemColor::purple}}));
    EXPECT_EQ(cellOf(4), (TableCell{"进程退出", kWord, {SystemColor::red}}));
    EXPECT_EQ(cellOf(9), (TableCell{"未知", kWord, secondaryTint()}));
    EXPECT_EQ(cellOf(0), (TableCell{"未知", kWord, secondaryTint()}));
}

} // namespace
} // namespace quillbrook
