#include "shell/PermissionSetupWindow.h"
#include "pages/kit/BorderedButton.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/Elements.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>

namespace quillbrook {
namespace {

using testing::Contains;

class PermissionSetupWindowTest : public testing::Test {
protected:
    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600};
    int completions = 0;
};

TEST_F(PermissionSetupWindowTest, IsOfOneSizeInTheMiddleOfTheScreen)
{
    const PermissionSetupWindow window(machine.platform(), false, [] {});
    EXPECT_EQ(window.minimumSize(), QSize(500, 560));
    EXPECT_EQ(window.maximumSize(), QSize(500, 560));
    EXPECT_EQ(window.windowTitle(), "Quillbrook 初始设置");
    const QPoint offset
        = window.geometry().center() - QApplication::primaryScreen()->availableGeometry().center();
    EXPECT_LE(offset.manhattanLength(), 2);
}

TEST_F(PermissionSetupWindowTest, TellsItsPageOfAnUpdate)
{
    PermissionSetupWindow window(machine.platform(), true, [] {});
    window.show();
    EXPECT_THAT(namesOf(elementsOf(window, QAccessible::StaticText)), Contains("检测到应用已更新"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window)->role(), QAccessible::Window);
}

TEST_F(PermissionSetupWindowTest, CompletesWhenTheUserGoesOnButNotWhenItIsClosed)
{
    PermissionSetupWindow window(machine.platform(), false, [this] { ++completions; });
    window.show();
    window.close();
    EXPECT_EQ(completions, 0);
    EXPECT_FALSE(machine.userDefaults.boolForKey("hasLaunchedBefore"));
    window.findChild<BorderedButton*>()->click();
    EXPECT_EQ(completions, 1);
    EXPECT_TRUE(machine.userDefaults.boolForKey("hasLaunchedBefore"));
}

} // namespace
} // namespace quillbrook
