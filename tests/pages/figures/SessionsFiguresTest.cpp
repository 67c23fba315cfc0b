#include "pages/figures/SessionsFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNow = 1767240000; // 2026-01-01 12:00 in UTC+8

const LocalCalendar kCalendar{.now = kNow, .secondsFromUtc = [](double) { return 28800; }};

const ContainsText kExactly
    = [](std::string_view text, std::string_view part) { return text.find(part) != text.npos; };

SessionDetail ended(std::string appName, Date startedAt)
{
    return {.appName = std::move(appName),
        .startedAt = startedAt,
        .endedAt = startedAt + 59,
        .durationSec = 59,
        .closeType = "switch",
        .status = "closed"};
}

SessionDetail running(std::string appName, Date startedAt)
{
    return {.appName = std::move(appName),
        .startedAt = startedAt,
        .closeType = "—",
        .status = "active"};
}

std::vector<std::string> names(const std::vector<SessionDetail>& sessions)
{
    std::vector<std::string> texts;
    for (const SessionDetail& session : sessions) {
        texts.push_back(session.appName);
    }
    return texts;
}

TEST(MergedSessions, PutsRunningOnesAboveAllEndedOnes)
{
    EXPECT_THAT(
        names(mergedSessions({ended("B", 20), running("A", 10), ended("C", 30), running("D", 15)})),
        ElementsAre("D", "A", "C", "B"));
}

TEST(MergedSessions, KeepsTheOrderOfEqualBeginnings)
{
    EXPECT_THAT(
        names(mergedSessions({ended("A", 10), running("B", 10), ended("C", 10), running("D", 10)})),
        ElementsAre("B", "D", "A", "C"));
}

TEST(MergedSessions, TakesAnyBeginning)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_THAT(
        names(mergedSessions({ended("A", -kInfinity), ended("B", 1), ended("C", kInfinity)})),
        ElementsAre("C", "B", "A"));
}

TEST(FilteredSessions, LetAllPassWithoutAFilter)
{
    EXPECT_THAT(names(filteredSessions({ended("B", 20), running("A", 10)}, {}, kExactly)),
        ElementsAre("A", "B"));
    EXPECT_THAT(filteredSessions({}, {}, kExactly), IsEmpty());
}

TEST(FilteredSessions, AskWhetherTheNameContainsTheFilter)
{
    const std::vector<SessionDetail> sessions{
        ended("Editor", 2), ended("Editor Pro", 1), ended("Web", 3)};
    EXPECT_THAT(names(filteredSessions(sessions, {.app = "Editor"}, kExactly)),
        ElementsAre("Editor", "Editor Pro"));
    EXPECT_THAT(filteredSessions(sessions, {.app = "Gone"}, kExactly), IsEmpty());
    const ContainsText never = [](std::string_view, std::string_view) { return false; };
    EXPECT_THAT(filteredSessions(sessions, {.app = "Editor"}, never), IsEmpty());
}

TEST(FilteredSessions, LeaveTheRunningOneOutOfEveryCloseType)
{
    const std::vector<SessionDetail> sessions{ended("B", 20), running("A", 10)};
    EXPECT_THAT(
        names(filteredSessions(sessions, {.closeType = "switch"}, kExactly)), ElementsAre("B"));
    EXPECT_THAT(filteredSessions(sessions, {.closeType = "startup"}, kExactly), IsEmpty());
}

TEST(FilteredSessions, LeaveOnlyTheRunningOneWithActive)
{
    const std::vector<SessionDetail> sessions{ended("B", 20), running("A", 10)};
    EXPECT_THAT(
        names(filteredSessions(sessions, {.status = "active"}, kExactly)), ElementsAre("A"));
}

TEST(FilteredSessions, PassAllThreeFilters)
{
    const std::vector<SessionDetail> sessions{ended("Editor", 20), running("Editor", 10)};
    const SessionsFilter filter{.app = "Edit", .closeType = "switch", .status = "closed"};
    EXPECT_EQ(filteredSessions(sessions, filter, kExactly).size(), 1u);
    EXPECT_THAT(filteredSessions(
                    sessions, {.app = "Edit", .closeType = "switch", .status = "active"}, kExactly),
        IsEmpty());
}

TEST(UniqueApps, AreSortedByTheirBytes)
{
    const std::vector<SessionDetail> sessions{
        ended("微信", 1), ended("b", 2), ended("B", 3), ended("a", 4), ended("b", 5)};
    EXPECT_THAT(uniqueApps(sessions), ElementsAre("B", "a", "b", "微信"));
    EXPECT_THAT(uniqueApps({}), IsEmpty());
}

TEST(SessionCountText, CountsSessions)
{
    EXPECT_EQ(sessionCountText(0), "0 个会话");
    EXPECT_EQ(sessionCountText(200), "200 个会话");
}

TEST(SessionOptions, AreThoseOfThePickers)
{
    std::vector<std::pair<std::string_view, std::string_view>> options;
    for (const FilterOption& option : closeTypeOptions) {
        options.emplace_back(option.label, option.value);
    }
    for (const FilterOption& option : statusOptions) {
        options.emplace_back(option.label, option.value);
    }
    using Pair = std::pair<std::string_view, std::string_view>;
    EXPECT_THAT(options,
        ElementsAre(Pair{"全部", ""}, Pair{"switch", "switch"},
            Pair{"idle_recover", "idle_recover"}, Pair{"sleep_recover", "sleep_recover"},
            Pair{"lock_recover", "lock_recover"}, Pair{"startup", "startup"}, Pair{"全部", ""},
            Pair{"活跃(active)", "active"}, Pair{"已关闭(closed)", "closed"},
            Pair{"恢复(recover)", "recover"}));
}

TEST(SessionColumns, StandInTheirOrder)
{
    EXPECT_THAT(sessionColumns(),
        ElementsAre(TableColumn{"日期", 45},
            TableColumn{.title = "应用", .width = 150, .namesTheRow = true},
            TableColumn{"开始", 70}, TableColumn{"结束", 70},
            TableColumn{"时长", 65, TextAlignment::trailing},
            TableColumn{"关闭", 110, TextAlignment::center},
            TableColumn{"状态", 55, TextAlignment::center}));
}

std::vector<TableCell> cellsOf(const SessionDetail& session)
{
    std::vector<TableCell> cells;
    for (std::size_t column = 0; column < sessionColumns().size(); ++column) {
        cells.push_back(sessionCell({session}, static_cast<int>(column), kCalendar));
    }
    return cells;
}

constexpr TextFace kSmall{.pixels = 10};
constexpr TextFace kFigure{TextFamily::monospaced, 10};
constexpr TextFace kWord{.pixels = 10, .weight = TextWeight::medium};

TEST(SessionCells, ShowAnEndedSessionOfToday)
{
    EXPECT_THAT(cellsOf(ended("Editor", kNow)),
        ElementsAre(TableCell{"今天", kSmall, secondaryTint()},
            TableCell{"Editor", {.pixels = 13}, primaryTint(), TableDot{8, secondaryTint(0.5)}},
            TableCell{"12:00:00", kFigure, secondaryTint()},
            TableCell{"12:00:59", kFigure, secondaryTint()},
            TableCell{"59秒", kFigure, primaryTint()}, TableCell{"switch", kWord, secondaryTint()},
            TableCell{"closed", kWord, secondaryTint(0.6)}));
}

TEST(SessionCells, ShowARunningSessionOfYesterday)
{
    EXPECT_THAT(cellsOf(running("Editor", kNow - 86400)),
        ElementsAre(TableCell{"昨天", kSmall, {SystemColor::orange, 0.6}},
            TableCell{"Editor", {.pixels = 13}, primaryTint(), TableDot{8, {SystemColor::green}}},
            TableCell{"12:00:00", kFigure, secondaryTint()},
            TableCell{"--:--:--", kFigure, secondaryTint(0.4)},
            TableCell{"0秒", kFigure, primaryTint()}, TableCell{"—", kWord, {SystemColor::green}},
            TableCell{"active", kWord, {SystemColor::green}}));
}

TEST(SessionCells, ShowTheDateOfAnOlderSession)
{
    EXPECT_EQ(cellsOf(ended("Editor", kNow - 2 * 86400))[0],
        (TableCell{"12/30", kSmall, {SystemColor::orange, 0.6}}));
}

TEST(SessionCells, ColourWhatEndedASession)
{
    const auto colorOf = [](std::string closeType) {
        return closeTypeColor({SessionDetail{.closeType = std::move(closeType)}});
    };
    EXPECT_EQ(colorOf("—"), Tint{SystemColor::green});
    EXPECT_EQ(colorOf("switch"), secondaryTint());
    EXPECT_EQ(colorOf("idle_recover"), Tint{SystemColor::orange});
    EXPECT_EQ(colorOf("sleep_recover"), Tint{SystemColor::blue});
    EXPECT_EQ(colorOf("lock_recover"), Tint{SystemColor::purple});
    EXPECT_EQ(colorOf("startup"), Tint{SystemColor::teal});
    EXPECT_EQ(colorOf("7"), secondaryTint());
}

TEST(SessionCells, ColourTheStatus)
{
    const auto tintOf = [](std::string status) {
        return sessionCell({SessionDetail{.status = std::move(status)}}, 6, kCalendar).tint;
    };
    EXPECT_EQ(tintOf("active"), Tint{SystemColor::green});
    EXPECT_EQ(tintOf("recover"), Tint{SystemColor::orange});
    EXPECT_EQ(tintOf("closed"), secondaryTint(0.6));
    EXPECT_EQ(tintOf(""), secondaryTint(0.6));
}

} // namespace
} // namespace quillbrook
