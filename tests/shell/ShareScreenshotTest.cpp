#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/DashboardWindowController.h"
#include "shell/ShareScreenshotButton.h"
#include "support/Elements.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QMenu>

namespace quillbrook {
namespace {

using testing::Contains;

/// A picture whose pixels tell their column in points.
QImage ruler(int width, int height, double scale = 1)
{
    QImage image(qRound(width * scale), qRound(height * scale), QImage::Format_RGB32);
    for (int x = 0; x < image.width(); ++x) {
        const auto column = static_cast<uint>(x / scale);
        for (int y = 0; y < image.height(); ++y) {
            image.setPixel(x, y, 0xFF000000U | column);
        }
    }
    image.setDevicePixelRatio(scale);
    return image;
}

TEST(PagePart, BeginsBehindTheSidebar)
{
    const QImage part = pagePart(ruler(1000, 40));
    EXPECT_EQ(part.size(), QSize(780, 40));
    EXPECT_EQ(part.pixel(0, 0), 0xFF000000U | 220U);
    EXPECT_EQ(part.pixel(779, 39), 0xFF000000U | 999U);
}

TEST(PagePart, IsTransparentWhereTheContentHasEnded)
{
    const QImage part = pagePart(ruler(500, 40));
    EXPECT_EQ(part.size(), QSize(400, 40));
    EXPECT_EQ(part.pixel(279, 0), 0xFF000000U | 499U);
    EXPECT_EQ(qAlpha(part.pixel(280, 0)), 0);
    EXPECT_EQ(qAlpha(part.pixel(399, 39)), 0);
}

TEST(PagePart, KeepsEveryDevicePixel)
{
    for (const double scale : {1.25, 1.5, 2.0, 3.0}) {
        const QImage part = pagePart(ruler(820, 20, scale));
        EXPECT_EQ(part.size(), QSize(qRound(600 * scale), qRound(20 * scale)));
        EXPECT_EQ(part.devicePixelRatio(), scale);
        EXPECT_EQ(part.pixel(0, 0), 0xFF000000U | 220U);
        EXPECT_EQ(part.pixel(part.width() - 1, 0), 0xFF000000U | 819U);
    }
}

class ShareScreenshotTest : public testing::Test {
protected:
    ShareScreenshotTest()
    {
        controller.show();
        settle();
    }

    ~ShareScreenshotTest() override { QGuiApplication::clipboard()->clear(); }

    void settle()
    {
        machine.runFor(0);
        QApplication::processEvents();
    }

    QWidget& window() { return *controller.shownWindow(); }
    ShareScreenshotButton& button() { return *window().findChild<ShareScreenshotButton*>(); }

    /// The menu that a press opens; null when it opens none.
    QMenu* menuOfAPress()
    {
        button().setFocus(Qt::TabFocusReason);
        press(button(), Qt::Key_Space);
        settle();
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }

    /// How the page looks, without the button's own look, which the keys change.
    QImage page() { return pagePart(window().grab().toImage()).copy(0, 60, 500, 500); }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600};
    VirtualApplication application{};
    DashboardWindowController controller{machine.platform(), application, [](std::string_view) {}};
};

TEST_F(ShareScreenshotTest, IsAButtonWithANameAndNoTooltip)
{
    EXPECT_THAT(namesOf(elementsOf(window(), QAccessible::Button)), Contains("分享"));
    EXPECT_EQ(button().toolTip(), "");
    EXPECT_EQ(button().text(), "");
}

TEST_F(ShareScreenshotTest, OffersThePictureAtAFixedPlaceOfTheWindow)
{
    window().move(100, 50);
    const QMenu* menu = menuOfAPress();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->pos(), window().frameGeometry().topLeft() + QPoint(36, 23));
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_EQ(menu->actions()[0]->text(), "拷贝图片");
    EXPECT_EQ(menu->actions()[1]->text(), "存储为 PNG…");
}

TEST_F(ShareScreenshotTest, CopiesThePage)
{
    window().resize(1000, 600);
    settle();
    QMenu* menu = menuOfAPress();
    ASSERT_NE(menu, nullptr);
    const QImage before = page();
    menu->actions()[0]->trigger();
    const QImage copied = QGuiApplication::clipboard()->image();
    EXPECT_EQ(copied.size(), QSize(780, 600));
    EXPECT_EQ(copied.copy(0, 60, 500, 500), before);
}

TEST_F(ShareScreenshotTest, SavesThePageThroughADialogueOfTheWindow)
{
    QMenu* menu = menuOfAPress();
    ASSERT_NE(menu, nullptr);
    menu->actions()[1]->trigger();
    settle();
    auto* dialog = window().findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
    const QString path = QString::fromStdString((directory.path() / "page.png").string());
    emit dialog->fileSelected(path);
    dialog->close();
    EXPECT_EQ(QImage(path).size(), window().size() - QSize(220, 0));
    EXPECT_TRUE(QGuiApplication::clipboard()->image().isNull());
}

TEST_F(ShareScreenshotTest, LeavesNoFileWhereNoneCanBeWritten)
{
    QMenu* menu = menuOfAPress();
    ASSERT_NE(menu, nullptr);
    menu->actions()[1]->trigger();
    settle();
    const QString path = QString::fromStdString((directory.path() / "none" / "page.png").string());
    emit window().findChild<QFileDialog*>()->fileSelected(path);
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(ShareScreenshotTest, LeavesNothingBehindWhenTheMenuIsClosed)
{
    QMenu* menu = menuOfAPress();
    ASSERT_NE(menu, nullptr);
    press(*menu, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window().findChild<QMenu*>(QString(), Qt::FindDirectChildrenOnly), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), &button());
    EXPECT_TRUE(QGuiApplication::clipboard()->image().isNull());
}

TEST_F(ShareScreenshotTest, DoesNothingWithoutAWindowThatHasTheFocus)
{
    window().hide();
    settle();
    ASSERT_EQ(QApplication::activeWindow(), nullptr);
    button().share();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(window().findChild<QMenu*>(QString(), Qt::FindDirectChildrenOnly), nullptr);
}

} // namespace
} // namespace quillbrook
