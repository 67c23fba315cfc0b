#include "pages/kit/MarkList.h"

#include "support/AccessibleEvents.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QScrollBar>

#include <set>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kRowHeight = 40;
constexpr int kWidth = 300;

/// A list that shows five rows, and notes which are asked for and pressed.
class MarkListTest : public testing::Test {
protected:
    MarkListTest()
    {
        list.resize(kWidth, 5 * kRowHeight);
        QObject::connect(
            &list, &MarkList::pressed, &list, [this](int row) { pressed.push_back(row); });
    }

    void show(int count, MarkRole role = MarkRole::row)
    {
        list.setRows(count, [this, role](int row, Size size, const TextWidth&) {
            asked.insert(row);
            rowSize = size;
            Mark mark = boxMark({0, 0, size.width, size.height - 1}, {SystemColor::red});
            mark.role = role;
            mark.name = "row " + std::to_string(row);
            mark.value = row == 1 ? std::string(kCheckedValue) : "v" + std::to_string(row);
            return std::vector<Mark>{boxMark({}, {}), mark};
        });
        list.show();
        QCoreApplication::processEvents();
    }

    void click(QPoint down, QPoint up)
    {
        send(QEvent::MouseButtonPress, down);
        send(QEvent::MouseButtonRelease, up);
    }

    void send(QEvent::Type type, QPoint point)
    {
        QMouseEvent event(type, point, list.viewport()->mapToGlobal(point), Qt::LeftButton,
            Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &event);
    }

    QAccessibleInterface& element(int row)
    {
        return *QAccessible::queryAccessibleInterface(&list)->child(row);
    }

    std::set<int> asked{};
    std::vector<int> pressed{};
    Size rowSize{};
    MarkList list{"rows", {.rowHeight = kRowHeight, .sideMargin = 12}};
};

TEST_F(MarkListTest, TellsReadersWhichOfItsRowsAreCalledOtherwise)
{
    const AccessibleEvents events;
    std::vector<std::string> names{"first", "second"};
    const MarkList::RowPicture picture = [&names](int row, Size, const TextWidth&) {
        Mark mark = boxMark({0, 0, 10, 10}, {SystemColor::red});
        mark.role = MarkRole::row;
        mark.name = names.at(static_cast<std::size_t>(row));
        return std::vector<Mark>{mark};
    };
    list.setRows(2, picture);
    names[1] = "another";
    list.setRows(2, picture);
    EXPECT_THAT(events.of(list), ElementsAre(QAccessible::ObjectReorder, QAccessible::NameChanged));
    EXPECT_EQ(events.all().back().child, 1);
    names.pop_back(); // the rows before can't be made any more
    list.setRows(1, picture);
    EXPECT_EQ(events.of(list).back(), QAccessible::ObjectReorder);
}

TEST_F(MarkListTest, AsksOnlyForTheRowsThatAreSeen)
{
    show(2000);
    list.grab();
    EXPECT_THAT(asked, ElementsAre(0, 1, 2, 3, 4));
    asked.clear();
    list.verticalScrollBar()->setValue(1000 * kRowHeight);
    list.grab();
    EXPECT_THAT(asked, ElementsAre(1000, 1001, 1002, 1003, 1004));
}

TEST_F(MarkListTest, ScrollsToTheLastRowAndNoFurther)
{
    show(7);
    EXPECT_EQ(list.verticalScrollBar()->maximum(), 2 * kRowHeight);
    show(5);
    EXPECT_EQ(list.verticalScrollBar()->maximum(), 0);
}

TEST_F(MarkListTest, RowsAreAsFarFromBothSidesWithAndWithoutAScrollBar)
{
    show(5);
    list.grab();
    EXPECT_EQ(rowSize, (Size{kWidth - 24, kRowHeight}));
    show(6);
    list.grab();
    EXPECT_EQ(rowSize, (Size{kWidth - 24, kRowHeight}));
    EXPECT_EQ(list.viewport()->x(), 12);
}

TEST_F(MarkListTest, IsWalkedByKeys)
{
    show(12);
    press(list, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 0);
    press(list, Qt::Key_Up);
    EXPECT_EQ(list.currentRow(), 0);
    press(list, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 1);
    press(list, Qt::Key_PageDown);
    EXPECT_EQ(list.currentRow(), 5);
    press(list, Qt::Key_End);
    EXPECT_EQ(list.currentRow(), 11);
    press(list, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 11);
    press(list, Qt::Key_PageUp);
    EXPECT_EQ(list.currentRow(), 7);
    press(list, Qt::Key_Home);
    EXPECT_EQ(list.currentRow(), 0);
}

TEST_F(MarkListTest, ShowsTheRowThatKeysReach)
{
    show(12);
    press(list, Qt::Key_End);
    EXPECT_EQ(list.rowPlace(11).bottom() + 1, list.viewport()->height());
    press(list, Qt::Key_Home);
    EXPECT_EQ(list.rowPlace(0).top(), 0);
}

TEST_F(MarkListTest, ReturnAndSpacePressTheCurrentRow)
{
    show(3);
    press(list, Qt::Key_Return);
    EXPECT_THAT(pressed, IsEmpty());
    press(list, Qt::Key_Down);
    press(list, Qt::Key_Return);
    press(list, Qt::Key_Down);
    press(list, Qt::Key_Enter);
    press(list, Qt::Key_Down);
    press(list, Qt::Key_Space);
    EXPECT_THAT(pressed, ElementsAre(0, 1, 2));
}

TEST_F(MarkListTest, LeavesOtherKeysToItsWindow)
{
    show(3);
    for (const auto key : {Qt::Key_Escape, Qt::Key_A, Qt::Key_Return}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&list, &event);
        EXPECT_FALSE(event.isAccepted()) << key;
    }
}

TEST_F(MarkListTest, AClickPressesTheRowOnWhichItBeginsAndEnds)
{
    show(3);
    click({10, 50}, {200, 70});
    EXPECT_THAT(pressed, ElementsAre(1));
    EXPECT_EQ(list.currentRow(), 1);
    click({10, 50}, {10, 90});
    click({10, 150}, {10, 150}); // behind the last row
    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_F(MarkListTest, ARowUnderThePointerIsMarked)
{
    show(3);
    const QImage plain = list.grab().toImage();
    QMouseEvent move(QEvent::MouseMove, QPointF(10, 50),
        list.viewport()->mapToGlobal(QPointF(10, 50)), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(list.viewport(), &move);
    const QImage hovered = list.grab().toImage();
    EXPECT_EQ(hovered.pixel(100, 20), plain.pixel(100, 20));
    EXPECT_NE(hovered.pixel(100, 60), plain.pixel(100, 60));
}

TEST_F(MarkListTest, StaysWhereItIsWhenItsRowsChange)
{
    show(100);
    list.verticalScrollBar()->setValue(800);
    list.setCurrentRow(21);
    show(100);
    EXPECT_EQ(list.verticalScrollBar()->value(), 800);
    EXPECT_EQ(list.currentRow(), 21);
    show(10);
    EXPECT_EQ(list.verticalScrollBar()->value(), 200);
    EXPECT_EQ(list.currentRow(), std::nullopt);
    list.goToTop();
    EXPECT_EQ(list.verticalScrollBar()->value(), 0);
}

TEST_F(MarkListTest, ScreenReadersFindAllRowsThoseOutOfSightIncluded)
{
    show(8);
    EXPECT_THAT(namesOf(elementsOf(list, QAccessible::List)), ElementsAre("rows"));
    const auto rows = elementsOf(list, QAccessible::ListItem);
    ASSERT_EQ(rows.size(), 8U);
    EXPECT_EQ(rows[7], (Element{QAccessible::ListItem, "row 7", "v7"}));
    EXPECT_EQ(element(7).text(QAccessible::Description), "v7");
    EXPECT_FALSE(element(4).state().offscreen);
    EXPECT_TRUE(element(5).state().offscreen);
    EXPECT_EQ(
        element(2).rect(), QRect(list.viewport()->mapToGlobal(QPoint(0, 80)), QSize(276, 39)));
}

TEST_F(MarkListTest, ScreenReadersHearACheckMarkAsAState)
{
    show(3, MarkRole::button);
    EXPECT_EQ(element(1).role(), QAccessible::Button);
    EXPECT_TRUE(element(1).state().checked);
    EXPECT_EQ(element(1).text(QAccessible::Value), "checked");
    EXPECT_EQ(element(1).text(QAccessible::Description), "");
    EXPECT_FALSE(element(2).state().checked);
}

TEST_F(MarkListTest, ScreenReadersPressRowsAndHearOfTheCurrentOne)
{
    show(8);
    element(6).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(pressed, ElementsAre(6));
    list.activateWindow();
    list.setFocus();
    const AccessibleEvents events;
    press(list, Qt::Key_Down);
    ASSERT_FALSE(events.all().empty());
    EXPECT_EQ(events.all().back().type, QAccessible::Focus);
    EXPECT_EQ(events.all().back().child, 7);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&list)->focusChild(), &element(7));
}

TEST_F(MarkListTest, ARowThatIsGoneIsInvalid)
{
    show(8);
    QAccessibleInterface& last = element(7);
    show(2);
    EXPECT_FALSE(last.isValid());
    EXPECT_EQ(last.text(QAccessible::Name), "");
    last.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(pressed, IsEmpty());
}

} // namespace
} // namespace quillbrook
