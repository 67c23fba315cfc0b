#include "pages/kit/Chip.h"
#include "pages/kit/FigureCard.h"
#include "pages/kit/FlowLayout.h"
#include "pages/kit/HoverTip.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/LinkButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/SegmentedPicker.h"
#include "pages/kit/WrappedLabel.h"
#include "support/AccessibleEvents.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>

#include <vector>

namespace quillbrook {
namespace {

QAccessibleInterface& accessible(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

TEST(SegmentedPickerTest, TellsOnlyOfAChangedChoice)
{
    SegmentedPicker picker("period", {"a", "b", "c"}, 140);
    std::vector<int> picked;
    QObject::connect(
        &picker, &SegmentedPicker::picked, [&](int index) { picked.push_back(index); });
    accessible(picker).child(2)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    accessible(picker).child(2)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    EXPECT_EQ(picked, std::vector{2});
    EXPECT_EQ(accessible(picker).text(QAccessible::Value), "c");
    EXPECT_TRUE(accessible(picker).child(2)->state().checked);
    EXPECT_FALSE(accessible(picker).child(0)->state().checked);
}

TEST(SegmentedPickerTest, MovesByTheArrowKeys)
{
    SegmentedPicker picker("period", {"a", "b"}, 140);
    auto* first = qobject_cast<QWidget*>(accessible(picker).child(0)->object());
    press(*first, Qt::Key_Right);
    EXPECT_EQ(picker.current(), 1);
    press(picker, Qt::Key_Right); // there is nothing behind the last
    EXPECT_EQ(picker.current(), 1);
    press(picker, Qt::Key_Left);
    EXPECT_EQ(picker.current(), 0);
}

TEST(SegmentedPickerTest, IsOneStopOfTheTabKey)
{
    SegmentedPicker picker("period", {"a", "b", "c"}, 140);
    picker.setCurrent(1);
    for (int i = 0; i < 3; ++i) {
        const auto* segment = qobject_cast<QWidget*>(accessible(picker).child(i)->object());
        EXPECT_EQ(segment->focusPolicy(), i == 1 ? Qt::TabFocus : Qt::NoFocus);
    }
}

TEST(SegmentedPickerTest, LetsScreenReadersHearItsChoice)
{
    SegmentedPicker picker("period", {"a", "b"}, 140);
    const QObject& second = *accessible(picker).child(1)->object();
    const AccessibleEvents events;
    picker.setCurrent(1);
    EXPECT_THAT(events.of(second), testing::Contains(QAccessible::Selection));
    EXPECT_TRUE(accessible(picker).child(1)->state().selected);
    EXPECT_FALSE(accessible(picker).child(0)->state().selected);
}

TEST(SegmentedPickerTest, KeepsQuietWhenTheChoiceIsSet)
{
    SegmentedPicker picker("period", {"a", "b"}, 140);
    bool isTold = false;
    QObject::connect(&picker, &SegmentedPicker::picked, [&] { isTold = true; });
    picker.setCurrent(1);
    EXPECT_FALSE(isTold);
}

TEST(FigureCardTest, IsOneTextWithTheTitleAsName)
{
    FigureCard card({});
    card.setFigure("clock.fill", SystemColor::blue, "3h5m", "title");
    EXPECT_EQ(accessible(card).role(), QAccessible::StaticText);
    EXPECT_EQ(accessible(card).text(QAccessible::Name), "title");
    EXPECT_EQ(accessible(card).text(QAccessible::Value), "3h5m");
}

TEST(FigureCardTest, TellsTheWholeWhereItIsCut)
{
    FigureCard card({.value = 0.7, .title = 1});
    card.resize(400, 108);
    card.show();
    card.setFigure("clock.fill", SystemColor::blue, "3h5m", "a title of some length");
    EXPECT_EQ(card.toolTip(), "");
    card.resize(100, 108);
    EXPECT_EQ(card.toolTip(), "3h5m\na title of some length");
}

TEST(PageTitleTest, IsAText)
{
    PageTitle title("Today Is a Present", PageTitle::Design::serif);
    EXPECT_EQ(accessible(title).role(), QAccessible::StaticText);
    EXPECT_EQ(accessible(title).text(QAccessible::Name), "Today Is a Present");
}

TEST(IconButtonTest, IsPressedByKey)
{
    IconButton button("info.circle", 14, "about");
    bool isPressed = false;
    QObject::connect(&button, &IconButton::clicked, [&] { isPressed = true; });
    press(button, Qt::Key_Space);
    EXPECT_TRUE(isPressed);
    EXPECT_NE(button.focusPolicy() & Qt::TabFocus, 0);
    EXPECT_EQ(accessible(button).text(QAccessible::Name), "about");
}

TEST(ChipTest, ElidesALongNameButKeepsItWhole)
{
    const QString name(60, 'x');
    Chip chip(Chip::Kind::label, name, [](const QPalette&) { return QColor(Qt::red); });
    EXPECT_LT(chip.sizeHint().width(), 200);
    EXPECT_EQ(accessible(chip).text(QAccessible::Name), name);
    EXPECT_EQ(chip.toolTip(), name);
    EXPECT_EQ(chip.focusPolicy(), Qt::NoFocus);
}

TEST(ChipTest, NeedsNoToolTipForANameThatStandsWhole)
{
    const Chip chip(Chip::Kind::label, "Mail", [](const QPalette&) { return QColor(Qt::red); });
    EXPECT_EQ(chip.toolTip(), "");
}

TEST(ChipTest, ReadsNoMnemonicInAName)
{
    const Chip chip(Chip::Kind::button, "R&D", [](const QPalette&) { return QColor(Qt::red); });
    EXPECT_TRUE(chip.shortcut().isEmpty());
    EXPECT_EQ(chip.accessibleName(), "R&D");
}

TEST(HoverTipTest, StaysWithinItsParent)
{
    QWidget treemap;
    treemap.resize(400, 200);
    HoverTip tip(&treemap);
    tip.setContent(Qt::red, "Mail", "note");
    tip.showAt({60, 18});
    EXPECT_NEAR(tip.geometry().center().x(), 60, 1);
    tip.hide();
    tip.setContent(Qt::red, "An application with a name of forty chars", "note");
    tip.showAt({60, 18});
    EXPECT_EQ(tip.x(), 0);
    tip.hide();
    tip.showAt({340, 18});
    EXPECT_EQ(tip.geometry().right(), 399);
}

TEST(FlowLayoutTest, BeginsARowWhereTheWidthEnds)
{
    QWidget place;
    auto* flow = new FlowLayout(6, &place);
    for (int i = 0; i < 3; ++i) {
        auto* box = new QWidget;
        box->setFixedSize(50, 20);
        flow->addWidget(box);
    }
    EXPECT_EQ(flow->heightForWidth(162), 20);
    EXPECT_EQ(flow->heightForWidth(161), 46);
    EXPECT_EQ(flow->heightForWidth(10), 72);
    flow->clear();
    EXPECT_EQ(flow->count(), 0);
    EXPECT_EQ(flow->heightForWidth(100), 0);
}

TEST(WrappedLabelTest, IsAsHighAsItsPresentTextAndFontNeed)
{
    WrappedLabel label("one two three four five six seven", Look::systemFont(12));
    const int narrow = label.heightForWidth(60);
    const int wide = label.heightForWidth(600);
    EXPECT_GT(narrow, wide);
    EXPECT_EQ(label.heightForWidth(60), narrow);
    label.setText("one");
    EXPECT_EQ(label.heightForWidth(60), wide);
    label.setFont(Look::systemFont(24));
    EXPECT_GT(label.heightForWidth(60), wide);
}

TEST(LinkButtonTest, IsPressedByKeysAndByScreenReaders)
{
    LinkButton link("more & more", Look::font(TextStyle::callout));
    int presses = 0;
    QObject::connect(&link, &LinkButton::clicked, [&presses] { ++presses; });
    EXPECT_NE(link.focusPolicy() & Qt::TabFocus, 0);
    EXPECT_EQ(accessible(link).role(), QAccessible::Button);
    EXPECT_EQ(accessible(link).text(QAccessible::Name), "more & more");
    press(link, Qt::Key_Space);
    accessible(link).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(presses, 2);
}

} // namespace
} // namespace quillbrook
