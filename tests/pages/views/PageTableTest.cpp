#include "pages/views/PageTable.h"

#include "pages/kit/Symbol.h"
#include "platform/qt/QtText.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;

using PageTableTest = PagesFixture;

TEST_F(PageTableTest, StandsInTheOrderOfTheSidebar)
{
    std::vector<std::string> rows;
    for (const PageEntry& page : pageTable()) {
        if (!page.section.empty()) {
            rows.push_back(std::string(page.section) + " " + std::string(rawValue(page.tab)) + " "
                + std::string(page.symbol));
        }
    }
    EXPECT_THAT(rows,
        ElementsAre("知行 Today calendar.day.timeline.left", "知行 Past calendar.badge.clock",
            "知行 Future heart.circle", "观照 Habit chart.bar.doc.horizontal", "观照 Focus scope",
            "活动 Tokens keyboard", "活动 Alerts exclamationmark.triangle"));
}

TEST_F(PageTableTest, MakesAPageForEveryTab)
{
    for (const auto& tab : allCases<NavTab>) {
        const PageEntry& entry = pageOf(tab.value);
        EXPECT_EQ(entry.tab, tab.value);
        EXPECT_TRUE(Symbol::names().contains(toQString(entry.symbol))) << entry.symbol;
        const auto page = entry.make(tools(), nullptr);
        ASSERT_NE(page, nullptr);
        page->show(DashboardData{});
    }
}

TEST_F(PageTableTest, FitsThePagesIntoTheSmallestWindowBesideTheSidebar)
{
    constexpr int kRoom = 820 - 220 - 10; // without the sidebar and the scroll bar
    for (const PageEntry& entry : pageTable()) {
        const auto page = entry.make(tools(), nullptr);
        page->show(DashboardData{.keylogHourly = {{.hour = 9}},
            .categoryUsage = {{.label = "x", .totalSeconds = 60}},
            .focusHours = {{.hour = 9, .activeSec = 60, .activeDays = 1}},
            .durationBuckets = {{.label = "x", .count = 1}},
            .dailyAvgSessions = {{.date = "01-01", .avgUnder5 = 1}}});
        EXPECT_LE(page->widget()->minimumSizeHint().width(), kRoom) << rawValue(entry.tab);
    }
}

} // namespace
} // namespace quillbrook
