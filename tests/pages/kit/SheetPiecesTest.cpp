#include "pages/kit/PlainButton.h"
#include "pages/kit/SearchField.h"
#include "pages/kit/SheetHead.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLineEdit>

namespace quillbrook {
namespace {

using testing::ElementsAre;

TEST(SearchField, TellsWhatIsTypedAndOffersToEmptyIt)
{
    SearchField field("search");
    std::vector<std::string> told;
    QObject::connect(&field, &SearchField::textChanged, &field,
        [&told](const QString& text) { told.push_back(text.toStdString()); });
    field.show();
    EXPECT_TRUE(elementsOf(field, QAccessible::Button).empty());
    field.setText("ab");
    EXPECT_THAT(namesOf(elementsOf(field, QAccessible::Button)), ElementsAre("清空搜索"));
    field.findChild<QAbstractButton*>()->click();
    EXPECT_THAT(told, ElementsAre("ab", ""));
    EXPECT_TRUE(elementsOf(field, QAccessible::Button).empty());
}

TEST(SearchField, KeepsTheFocusWhenItIsEmptied)
{
    SearchField field("search");
    field.show();
    field.activateWindow();
    field.setText("ab");
    auto* clear = field.findChild<QAbstractButton*>();
    clear->setFocus();
    clear->click();
    EXPECT_EQ(field.focusWidget(), field.findChild<QLineEdit*>());
}

TEST(SearchField, TheArrowKeyDownLeavesIt)
{
    SearchField field("search");
    int times = 0;
    QObject::connect(&field, &SearchField::leftDownwards, &field, [&times] { ++times; });
    press(*field.findChild<QLineEdit*>(), Qt::Key_Down);
    press(*field.findChild<QLineEdit*>(), Qt::Key_Up);
    EXPECT_EQ(times, 1);
}

TEST(SheetHead, HasItsTitleWholeAndAButton)
{
    const std::string title = "「" + std::string(40, 'W') + "」的分类";
    SheetHead head(QString::fromStdString(title), "取消");
    head.resize(360, 48);
    head.show();
    EXPECT_THAT(namesOf(elementsOf(head, QAccessible::StaticText)), ElementsAre(title));
    int times = 0;
    QObject::connect(&head, &SheetHead::pressed, &head, [&times] { ++times; });
    head.findChild<QAbstractButton*>()->click();
    EXPECT_EQ(times, 1);
    EXPECT_THAT(namesOf(elementsOf(head, QAccessible::Button)), ElementsAre("取消"));
}

TEST(PlainButton, IsAButtonOfItsText)
{
    PlainButton button("arrow.uturn.backward", "back & forth", 14, {SystemColor::orange});
    button.resize(200, 42);
    button.show();
    EXPECT_THAT(namesOf(elementsOf(button, QAccessible::Button)), ElementsAre("back & forth"));
    EXPECT_TRUE(button.shortcut().isEmpty());
    EXPECT_EQ(button.focusPolicy(), Qt::StrongFocus);
}

} // namespace
} // namespace quillbrook
