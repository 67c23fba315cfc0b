#include "pages/views/KeylogView.h"

#include "pages/kit/Line.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPointer>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

using KeylogViewTest = PagesFixture;

DashboardData typedData()
{
    KeylogHourly nine{.hour = 9, .keystrokes = 300};
    nine.apps = {{"Editor", {200, "english"}}, {"Chat", {100, "双拼"}}};
    return {.keylogHourly = {nine, {.hour = 10}}, .totalKeylogKeystrokes = 300};
}

TEST_F(KeylogViewTest, ShowsItsCardsAloneWithoutHours)
{
    const auto page = shownPage<KeylogView>({});
    const auto texts = elementsOf(*page, QAccessible::StaticText);
    EXPECT_THAT(namesOf(texts),
        testing::ElementsAre(
            "Every Token Counts", "击键", "Tokens", "TPM", "会话", "心生种种法生，心灭种种法灭。"));
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator), IsEmpty());
}

TEST_F(KeylogViewTest, ShowsHoursMethodsAndApplications)
{
    const auto page = shownPage<KeylogView>(typedData());
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)),
        IsSupersetOf({"分小时的击键次数", "分输入法的击键次数", "英文", "双拼中文",
            "应用的Token输入排名", "Editor", "Chat"}));
    const auto marks = elementsOf(*page, QAccessible::Indicator);
    EXPECT_THAT(marks, Contains(Element{QAccessible::Indicator, "9", "300"}));
    EXPECT_THAT(marks, Contains(Element{QAccessible::Indicator, "英文", "200"}));
    EXPECT_THAT(marks, Contains(Element{QAccessible::Indicator, "Editor", "49.6"}));
}

TEST_F(KeylogViewTest, SaysWhereNoMethodIsKnown)
{
    const auto page = shownPage<KeylogView>({.keylogHourly = {{.hour = 0}}});
    const auto names = namesOf(elementsOf(*page, QAccessible::StaticText));
    EXPECT_THAT(names, Contains("暂无数据"));
    EXPECT_THAT(names, Not(Contains("应用的Token输入排名")));
}

TEST_F(KeylogViewTest, ExplainsTheTokensInAPopover)
{
    const auto page = shownPage<KeylogView>({});
    button(*page, "Token 换算逻辑").click();
    const QPointer<QWidget> popover = QApplication::activePopupWidget();
    ASSERT_NE(popover, nullptr);
    EXPECT_THAT(namesOf(elementsOf(*popover, QAccessible::StaticText)),
        IsSupersetOf({"Token 换算逻辑", "英文", "1 击键 ≈ 0.248 token", "双拼",
            "1 击键 ≈ 0.267 token", "其他", "1 击键 ≈ 0.152 token", "TPM", "每分钟输入 Token 数",
            "参考：基于 GPT-4o tokenizer 实测统计", "数据来自 keylog 工具全局 keyDown 计数"}));
    // More room around the divider under the headline than around those among the entries.
    const auto lines = popover->findChildren<Line*>();
    const auto labels = popover->findChildren<QLabel*>();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0]->y() - (labels[0]->y() + labels[0]->height() - 6), 12);
    EXPECT_EQ(labels[1]->y() - (lines[0]->y() + lines[0]->height()), 12);
    EXPECT_EQ(labels[4]->y() - (lines[1]->y() + lines[1]->height()), 6);
    press(*popover, Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(KeylogViewTest, SetsThePeriodThatIsPicked)
{
    const auto page = shownPage<KeylogView>({});
    button(*page, "本周").click();
    EXPECT_EQ(provider.keylogPeriod.get(), KeylogPeriod::week);
}

} // namespace
} // namespace quillbrook
