#include "pages/kit/Table.h"

#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include <set>

namespace quillbrook {
namespace {

using testing::ElementsAre;

std::vector<TableColumn> columns()
{
    return {{.title = "name", .width = 150},
        {.title = "time", .width = 70, .alignment = TextAlignment::trailing}};
}

TableCell numbered(int row, int column)
{
    return {.text = (column == 0 ? "row " : "time ") + std::to_string(row)};
}

TEST(Table, IsATableWithAHeaderForScreenReaders)
{
    Table table("sessions", columns());
    table.setRows(2, numbered);
    table.resize(300, 200);
    table.show();
    EXPECT_THAT(namesOf(elementsOf(table, QAccessible::Table)), ElementsAre("sessions"));
    EXPECT_THAT(namesOf(elementsOf(table, QAccessible::ColumnHeader)), ElementsAre("name", "time"));
    EXPECT_THAT(namesOf(elementsOf(table, QAccessible::Cell)),
        ElementsAre("row 0", "time 0", "row 1", "time 1"));
    auto* interface = QAccessible::queryAccessibleInterface(&table.view())->tableInterface();
    EXPECT_EQ(interface->rowCount(), 2);
    EXPECT_EQ(interface->columnCount(), 2);
    EXPECT_EQ(interface->cellAt(1, 0)->text(QAccessible::Name), "row 1");
}

TEST(Table, AsksOnlyForTheRowsThatAreSeen)
{
    Table table("sessions", columns());
    std::set<int> asked;
    table.setRows(10'000, [&asked](int row, int column) {
        asked.insert(row);
        return numbered(row, column);
    });
    table.resize(300, 29 + 5 * 36);
    table.show();
    table.grab();
    EXPECT_THAT(asked, ElementsAre(0, 1, 2, 3, 4));
    asked.clear();
    table.view().verticalScrollBar()->setValue(9'000 * 36);
    table.grab();
    EXPECT_THAT(asked, ElementsAre(9'000, 9'001, 9'002, 9'003, 9'004));
}

TEST(Table, KeepsItsHeaderWhileTheRowsScroll)
{
    Table table("sessions", columns());
    table.setRows(100, numbered);
    table.resize(300, 200);
    table.show();
    const QRect before = table.view().horizontalHeader()->geometry();
    table.view().scrollToBottom();
    EXPECT_EQ(table.view().horizontalHeader()->geometry(), before);
    EXPECT_EQ(before.height(), 29);
    EXPECT_TRUE(table.view().horizontalHeader()->isVisible());
}

TEST(Table, GoesToTheTopWithNewRows)
{
    Table table("sessions", columns());
    table.setRows(100, numbered);
    table.resize(300, 200);
    table.show();
    table.view().scrollToBottom();
    table.setRows(90, numbered);
    EXPECT_EQ(table.view().verticalScrollBar()->value(), 0);
    table.setRows(0, numbered);
    EXPECT_THAT(elementsOf(table, QAccessible::Cell), testing::IsEmpty());
}

TEST(Table, GivesTheRestOfItsWidthToTheColumnThatTakesIt)
{
    std::vector<TableColumn> growing = columns();
    growing[0].takesTheRest = true;
    Table table("sessions", growing);
    table.resize(600, 200);
    table.show();
    EXPECT_EQ(table.view().columnWidth(0) + table.view().columnWidth(1), 600);
    EXPECT_EQ(table.view().columnWidth(1), 4 + 70 + 16);
    table.resize(200, 200);
    EXPECT_EQ(table.view().columnWidth(0), 16 + 112 + 4); // and the rest scrolls
}

TEST(Table, NarrowsItsColumnsAlikeBeforeTheyScroll)
{
    Table table("sessions", columns()); // 220 points, and 40 of padding
    table.show();
    const auto widths = [&table](int width) {
        table.resize(width, 200);
        return std::pair(table.view().columnWidth(0) - 20, table.view().columnWidth(1) - 20);
    };
    EXPECT_EQ(widths(260), std::pair(150, 70));
    EXPECT_EQ(widths(40 + 176), std::pair(120, 56));
    EXPECT_EQ(widths(40 + 165), std::pair(112, 52));
    EXPECT_EQ(table.view().horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(widths(40 + 100), std::pair(112, 52));
    EXPECT_GT(table.view().horizontalScrollBar()->maximum(), 0);
}

TEST(Table, CallsARowByTheColumnThatNamesIt)
{
    std::vector<TableColumn> naming = columns();
    naming[1].namesTheRow = true;
    Table table("sessions", naming);
    table.setRows(2, numbered);
    auto* interface = QAccessible::queryAccessibleInterface(&table.view())->tableInterface();
    EXPECT_EQ(interface->rowDescription(1), "time 1");
}

TEST(Table, IsOneStopOfTheTabKey)
{
    Table table("sessions", columns());
    table.setRows(2, numbered);
    EXPECT_FALSE(table.view().tabKeyNavigation());
    table.show();
    press(table.view(), Qt::Key_Down);
    press(table.view(), Qt::Key_Down);
    EXPECT_EQ(table.view().currentIndex().row(), 1);
}

} // namespace
} // namespace quillbrook
