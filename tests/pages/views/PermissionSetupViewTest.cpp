#include "pages/views/PermissionSetupView.h"
#include "pages/kit/BorderedButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TintedLabel.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/AccessibleEvents.h"
#include "support/Elements.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QPointer>

#include <memory>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class PermissionSetupViewTest : public testing::Test {
protected:
    void open(bool isTrusted, bool isNewVersion = false)
    {
        machine.accessibility.setTrusted(isTrusted);
        view = std::make_unique<PermissionSetupView>(
            machine.platform(), isNewVersion, [this] { ++completions; });
        view->resize(500, 560);
        view->show();
        QCoreApplication::processEvents();
    }

    std::vector<std::string> texts() const
    {
        return namesOf(elementsOf(*view, QAccessible::StaticText));
    }

    std::vector<std::string> buttons() const
    {
        return namesOf(elementsOf(*view, QAccessible::Button));
    }

    QAbstractButton* button(const QString& text) const
    {
        for (auto* each : view->findChildren<QAbstractButton*>()) {
            if (each->text() == text) {
                return each;
            }
        }
        return nullptr;
    }

    std::string focused() const
    {
        const auto* widget = qobject_cast<QAbstractButton*>(view->focusWidget());
        return widget == nullptr ? "" : widget->text().toStdString();
    }

    /// What is said of the button beside its name.
    std::string descriptionOf(const QString& text) const
    {
        return QAccessible::queryAccessibleInterface(button(text))
            ->text(QAccessible::Description)
            .toStdString();
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600};
    std::unique_ptr<PermissionSetupView> view{};
    int completions = 0;
};

TEST_F(PermissionSetupViewTest, AFirstLaunchWithoutThePermissionShowsTheWaysToIt)
{
    open(false);
    EXPECT_THAT(texts(),
        ElementsAre("欢迎使用 Quillbrook", "首次启动需要配置必要权限", "辅助功能", "必须",
            "用于键盘击键监控，统计输入数据", "未授权",
            "仅需要辅助功能权限，不需要输入监控或屏幕录制", "所有击键数据仅存储在本地，绝不外传",
            "请在 隐私与安全性 → 辅助功能 中开启 Quillbrook",
            "如果列表中没有 Quillbrook，点击 + 按钮手动添加"));
    EXPECT_THAT(buttons(),
        ElementsAre("打开系统设置", "在 Finder 中显示 App 位置", "跳过（键盘监控不可用）"));
}

TEST_F(PermissionSetupViewTest, TheWaysLeadWhereTheySay)
{
    open(false);
    button("打开系统设置")->click();
    EXPECT_EQ(machine.permissionGuide.settingsOpeningCount(), 1);
    button("在 Finder 中显示 App 位置")->click();
    EXPECT_EQ(machine.permissionGuide.revelationCount(), 1);
    EXPECT_EQ(completions, 0);
}

TEST_F(PermissionSetupViewTest, AGrantWhileItIsOpenBringsTheStartWithinTwoSeconds)
{
    open(false);
    machine.accessibility.setTrusted(true);
    machine.runFor(2);
    EXPECT_THAT(buttons(), ElementsAre("开始使用 Quillbrook"));
    EXPECT_THAT(texts(), Contains("已授权"));
    EXPECT_THAT(texts(), Contains("辅助功能权限已授权"));
    EXPECT_EQ(focused(), "开始使用 Quillbrook");
    EXPECT_EQ(descriptionOf("开始使用 Quillbrook"), "辅助功能权限已授权");
    button("开始使用 Quillbrook")->click();
    EXPECT_EQ(completions, 1);
}

TEST_F(PermissionSetupViewTest, AnUpdateThatFindsAGrantLetsOnlyReset)
{
    open(true, true);
    EXPECT_THAT(texts(), Contains("系统显示已授权，但版本更新后旧授权可能失效"));
    EXPECT_THAT(buttons(), ElementsAre("重置旧授权"));
    machine.runFor(10);
    EXPECT_THAT(buttons(), ElementsAre("重置旧授权"));
}

TEST_F(PermissionSetupViewTest, AnUpdateThatLosesTheGrantGoesOnAsAFirstLaunch)
{
    open(true, true);
    machine.accessibility.setTrusted(false);
    machine.runFor(2);
    EXPECT_THAT(texts(), Contains("欢迎使用 Quillbrook"));
    EXPECT_THAT(buttons(), Contains("打开系统设置"));
    machine.accessibility.setTrusted(true);
    machine.runFor(2);
    EXPECT_THAT(buttons(), ElementsAre("重置旧授权"));
}

TEST_F(PermissionSetupViewTest, AnUpdateWithoutAGrantIsLikeAFirstLaunch)
{
    open(false, true);
    EXPECT_THAT(texts(), Contains("欢迎使用 Quillbrook"));
    EXPECT_THAT(buttons(), Contains("打开系统设置"));
}

TEST_F(PermissionSetupViewTest, AResetLeadsThroughTheSettingsToTheStart)
{
    open(true, true);
    const QPointer<QAbstractButton> reset = button("重置旧授权");
    reset->click();
    EXPECT_FALSE(reset.isNull()); // it may be in the midst of being pressed
    EXPECT_THAT(texts(), Contains("欢迎使用 Quillbrook"));
    EXPECT_THAT(buttons(),
        ElementsAre("打开系统设置", "在 Finder 中显示 App 位置", "跳过（键盘监控不可用）"));
    machine.runFor(2);
    EXPECT_THAT(texts(), Contains("检测到应用已更新"));
    EXPECT_THAT(buttons(), ElementsAre("开始使用 Quillbrook"));
}

TEST_F(PermissionSetupViewTest, AResetThatFailsLeavesAllAsItIs)
{
    machine.childProcess.install("/usr/bin/tccutil", {.exitStatus = 1});
    machine.childProcess.install("/usr/bin/osascript", {.exitStatus = 1});
    open(true, true);
    const auto before = texts();
    auto* reset = button("重置旧授权");
    reset->click();
    reset->click();
    EXPECT_EQ(texts(), before);
    EXPECT_EQ(button("重置旧授权"), reset);
    EXPECT_EQ(machine.calls.all().size(), 4U);
}

TEST_F(PermissionSetupViewTest, SkippingGoesOnWithoutThePermission)
{
    open(false);
    button("跳过（键盘监控不可用）")->click();
    EXPECT_EQ(completions, 1);
    EXPECT_TRUE(machine.userDefaults.boolForKey("hasLaunchedBefore"));
}

TEST_F(PermissionSetupViewTest, FollowsThePermissionOnlyWhileItIsShown)
{
    open(false);
    view->hide();
    machine.accessibility.setTrusted(true);
    machine.runFor(10);
    view->show();
    EXPECT_THAT(buttons(), Contains("打开系统设置"));
    machine.runFor(2);
    EXPECT_THAT(buttons(), ElementsAre("开始使用 Quillbrook"));
}

TEST_F(PermissionSetupViewTest, AsksNothingWhileItsWindowIsMinimized)
{
    open(false);
    QWidget window;
    view->setParent(&window);
    view->show();
    window.show();
    QCoreApplication::processEvents();
    window.showMinimized();
    QCoreApplication::processEvents();
    machine.accessibility.setTrusted(true);
    machine.runFor(10);
    machine.accessibility.setTrusted(false);
    window.showNormal();
    QCoreApplication::processEvents();
    EXPECT_THAT(buttons(), Contains("打开系统设置"));
    view->setParent(nullptr);
}

TEST_F(PermissionSetupViewTest, WhereAServiceCountsTheWordsAreThoseOfTheService)
{
    machine.permissionGuide.setGiver(PermissionGiver::counterService);
    open(false);
    EXPECT_THAT(buttons(),
        ElementsAre("启用按键计数服务", "在文件管理器中显示程序位置", "跳过（键盘监控不可用）"));
    EXPECT_THAT(texts(), Not(Contains("请在 隐私与安全性 → 辅助功能 中开启 Quillbrook")));
    button("启用按键计数服务")->click();
    EXPECT_EQ(machine.permissionGuide.settingsOpeningCount(), 1);
}

TEST_F(PermissionSetupViewTest, KeysReachEveryButtonAndReturnPressesIt)
{
    open(false);
    view->activateWindow();
    std::vector<std::string> stops{focused()};
    for (int step = 0; step < 3; ++step) {
        press(*view->focusWidget(), Qt::Key_Tab);
        stops.push_back(focused());
    }
    EXPECT_THAT(stops,
        ElementsAre(
            "打开系统设置", "在 Finder 中显示 App 位置", "跳过（键盘监控不可用）", "打开系统设置"));
    press(*view->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(machine.permissionGuide.settingsOpeningCount(), 1);
    press(*view->focusWidget(), Qt::Key_Tab);
    press(*view->focusWidget(), Qt::Key_Enter);
    EXPECT_EQ(machine.permissionGuide.revelationCount(), 1);
    press(*view->focusWidget(), Qt::Key_Tab);
    press(*view->focusWidget(), Qt::Key_Space);
    EXPECT_EQ(completions, 1);
}

TEST_F(PermissionSetupViewTest, ReturnLeadsOnFromAnywhere)
{
    open(true);
    press(*view, Qt::Key_Return);
    EXPECT_EQ(completions, 1);
}

TEST_F(PermissionSetupViewTest, ScreenReadersHearTheHintsWithTheButtons)
{
    open(false);
    EXPECT_EQ(descriptionOf("打开系统设置"), "请在 隐私与安全性 → 辅助功能 中开启 Quillbrook");
    EXPECT_EQ(descriptionOf("在 Finder 中显示 App 位置"),
        "如果列表中没有 Quillbrook，点击 + 按钮手动添加");
}

TEST_F(PermissionSetupViewTest, ScreenReadersAreLedToWhatAChangeBrings)
{
    open(false);
    view->activateWindow();
    const AccessibleEvents events;
    machine.accessibility.setTrusted(true);
    machine.runFor(2);
    EXPECT_THAT(events.of(*button("开始使用 Quillbrook")), Contains(QAccessible::Focus));
}

TEST_F(PermissionSetupViewTest, NothingIsCutInAnyState)
{
    for (const auto giver : {PermissionGiver::systemSettings, PermissionGiver::counterService}) {
        machine.permissionGuide.setGiver(giver);
        for (const bool isTrusted : {false, true}) {
            for (const bool isNewVersion : {false, true}) {
                open(isTrusted, isNewVersion);
                EXPECT_EQ(view->minimumSizeHint().expandedTo({500, 560}), QSize(500, 560));
                EXPECT_EQ(view->sizeHint().expandedTo({500, 560}), QSize(500, 560));
            }
        }
    }
}

TEST_F(PermissionSetupViewTest, GivesItsButtonsTheirSymbols)
{
    open(false);
    const auto symbolOf = [this](const QString& text) {
        return dynamic_cast<BorderedButton&>(*button(text)).symbolName();
    };
    EXPECT_EQ(symbolOf("打开系统设置"), "gearshape.fill");
    EXPECT_EQ(symbolOf("在 Finder 中显示 App 位置"), "folder");
    open(true, true);
    EXPECT_EQ(symbolOf("重置旧授权"), "arrow.triangle.2.circlepath");
}

TEST_F(PermissionSetupViewTest, ConfirmsThePermissionInGreen)
{
    open(true);
    const QList<SymbolLabel*> symbols = view->findChildren<SymbolLabel*>();
    ASSERT_EQ(symbols.size(), 1);
    EXPECT_EQ(symbols.front()->symbolName(), "checkmark.circle.fill");
    const auto* text = view->findChild<TintedLabel*>();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->text(), "辅助功能权限已授权");
    EXPECT_EQ(text->palette().color(QPalette::WindowText),
        Look::color(SystemColor::green, view->palette()));
}

} // namespace
} // namespace quillbrook
