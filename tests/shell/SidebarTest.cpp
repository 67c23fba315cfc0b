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

TEST(SidebarTest, WritesDarkOnALightAccent)
{
    Look::apply(false, Color{0xFF, 0xCC, 0x00});
    Sidebar sidebar;
    sidebar.setSelected(NavTab::history);
    const QColor dark = Look::textOnAccent(sidebar.palette());
    EXPECT_LT(dark.lightness(), 128);
    for (SidebarRow* row : sidebar.findChildren<SidebarRow*>()) {
        const Painting painting = paintingOf(*row);
        EXPECT_EQ(painting.texts.at(0).color == dark, row->isChecked());
    }
    const auto rows = sidebar.findChildren<SidebarRow*>();
    const bool hasDarkSymbol
        = paintingOf(*rows[1]).hasFilled(Symbol::outline("calendar.badge.clock"), dark);
    EXPECT_TRUE(hasDarkSymbol);
    Look::apply(false, std::nullopt);
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
