#include "shell/Sidebar.h"

#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "pages/views/PageTable.h"
#include "platform/qt/QtText.h"
#include "shell/AboutRow.h"
#include "shell/SidebarRow.h"
#include "support/Painting.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(SidebarTest, ShowsTheSymbolOfEachPage)
{
    Sidebar sidebar;
    sidebar.setSelected(NavTab::history);
    const auto rows = sidebar.findChildren<SidebarRow*>();
    qsizetype place = 0;
    for (const PageEntry& page : pageTable()) {
        if (page.section.empty()) {
            continue;
        }
        ASSERT_LT(place, rows.size());
        SidebarRow& row = *rows[place++];
        const QColor color
            = page.tab == NavTab::history ? QColor(Qt::white) : Look::accent(sidebar.palette());
        const Painting painting = paintingOf(row);
        EXPECT_TRUE(painting.hasFilled(Symbol::outline(toQString(page.symbol)), color))
            << page.symbol;
        EXPECT_EQ(painting.allText(), rawValue(page.tab));
    }
    EXPECT_EQ(place, rows.size());
}

TEST(SidebarTest, ShowsTheAboutRowInTheAccentWhileItIsSelected)
{
    Sidebar sidebar;
    AboutRow& about = *sidebar.findChild<AboutRow*>();
    const auto& symbol = Symbol::outline("info.circle");
    EXPECT_TRUE(paintingOf(about).hasFilled(symbol, Look::secondaryText(sidebar.palette())));
    sidebar.setSelected(NavTab::about);
    EXPECT_TRUE(paintingOf(about).hasFilled(symbol, Look::accent(sidebar.palette())));
    EXPECT_EQ(paintingOf(about).allText(), "关于");
}

} // namespace
} // namespace quillbrook
