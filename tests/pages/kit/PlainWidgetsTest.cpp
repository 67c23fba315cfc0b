#include "pages/kit/EmptyState.h"
#include "pages/kit/LoadingState.h"
#include "pages/kit/Look.h"
#include "pages/kit/Motto.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/Panel.h"
#include "pages/kit/ScrollPage.h"
#include "pages/kit/Sheet.h"
#include "pages/kit/Spinner.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace quillbrook {
namespace {

using testing::ElementsAre;

/// The hue of the fullest colour between two columns.
int hueBetween(const QImage& image, int from, int to)
{
    QColor fullest;
    for (int x = from; x < to; ++x) {
        for (int y = 0; y < image.height(); ++y) {
            const QColor color = image.pixelColor(x, y);
            if (color.hsvSaturation() > fullest.hsvSaturation()) {
                fullest = color;
            }
        }
    }
    return fullest.hsvHue();
}

TEST(PageTitleTest, ShinesFromOrangeThroughYellowToOrange)
{
    PageTitle title("Today Is a Present", PageTitle::Design::serif);
    title.resize(title.sizeHint());
    title.setAutoFillBackground(true);
    const QImage image = title.grab().toImage();
    const int width = image.width();
    const int orange = QColor(0xFF, 0x95, 0x00).hsvHue();
    const int yellow = QColor(0xFF, 0xCC, 0x00).hsvHue();
    EXPECT_NEAR(hueBetween(image, 0, width / 16), orange, 4);
    EXPECT_NEAR(hueBetween(image, width / 2 - 20, width / 2 + 20), yellow, 4);
    EXPECT_NEAR(hueBetween(image, width - width / 16, width), orange, 4);
}

TEST(PanelTest, PadsItsContentOnAGroundOfItsOwn)
{
    Panel panel;
    auto* column = new QVBoxLayout(&panel);
    column->setContentsMargins(0, 0, 0, 0);
    auto* content = new QWidget;
    column->addWidget(content);
    panel.resize(200, 100);
    panel.show();
    EXPECT_EQ(content->geometry(), QRect(20, 20, 160, 60));
    EXPECT_EQ(panel.grab().toImage().pixelColor(100, 5), Look::controlBackground(panel.palette()));
}

TEST(SheetTest, HoldsItsWindowUntilEscape)
{
    QWidget owner;
    owner.show();
    Sheet sheet("title", {300, 200}, &owner);
    sheet.open();
    EXPECT_EQ(sheet.size(), QSize(300, 200));
    EXPECT_EQ(sheet.minimumSize(), sheet.maximumSize());
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet.windowTitle(), "title");
    press(sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet.isVisible());
}

TEST(EmptyStateTest, ShowsAHintWhereThereIsOne)
{
    EmptyState with("scope", "line", "hint");
    with.show();
    EXPECT_THAT(namesOf(elementsOf(with, QAccessible::StaticText)), ElementsAre("line", "hint"));
    EmptyState without("scope", "line", {});
    without.show();
    EXPECT_THAT(namesOf(elementsOf(without, QAccessible::StaticText)), ElementsAre("line"));
}

TEST(LoadingStateTest, TurnsItsWheelOnlyWhileItIsVisible)
{
    LoadingState loading;
    const auto* timer = loading.findChild<Spinner*>()->findChild<QTimer*>();
    EXPECT_FALSE(timer->isActive());
    loading.show();
    EXPECT_THAT(namesOf(elementsOf(loading, QAccessible::StaticText)), ElementsAre("加载中..."));
    EXPECT_TRUE(timer->isActive());
    loading.hide();
    EXPECT_FALSE(timer->isActive());
}

TEST(MottoTest, TakesASecondLineWhereItIsNarrow)
{
    const Motto motto("一切有为法，如梦幻泡影，如露亦如电");
    EXPECT_EQ(motto.contentsMargins(), QMargins(20, 20, 20, 20));
    EXPECT_GT(motto.heightForWidth(200), motto.heightForWidth(600));
}

/// A page with two boxes that need 300 points of width and 268 of height with what lies round them.
class ScrollPageTest : public testing::Test {
protected:
    ScrollPageTest()
    {
        for (int i = 0; i < 2; ++i) {
            auto* box = new QWidget;
            box->setMinimumWidth(252);
            box->setFixedHeight(100);
            page.column()->addWidget(box);
        }
    }

    void showIn(int width, int height)
    {
        page.resize(width, height);
        page.show();
    }

    ScrollPage page{{.around = 24, .between = 20}};
};

TEST_F(ScrollPageTest, ScrollsDownwardsOnlyWhereItIsWideEnough)
{
    showIn(320, 120);
    EXPECT_EQ(page.widget()->height(), 2 * 100 + 20 + 2 * 24);
    EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(page.widget()->width(), page.viewport()->width());
}

TEST_F(ScrollPageTest, KeepsEverythingReachableWhereItIsTooNarrow)
{
    showIn(200, 120);
    EXPECT_EQ(page.widget()->width(), 300);
    EXPECT_EQ(page.horizontalScrollBar()->maximum(), 300 - page.viewport()->width());
}

TEST(ScrollPageFocusTest, FollowsTheTabKeyIntoThePageButNoPointer)
{
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* before = new QPushButton("before");
    row->addWidget(before);
    auto* page = new ScrollPage({.around = 0, .between = 2000});
    page->column()->addWidget(new QLabel("above"));
    auto* below = new QPushButton("below");
    page->column()->addWidget(below);
    row->addWidget(page);
    window.resize(300, 200);
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    const auto isScrolled = [page] { return page->verticalScrollBar()->value() > 0; };

    before->setFocus(Qt::MouseFocusReason);
    below->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(isScrolled());
    before->setFocus(Qt::MouseFocusReason);
    press(*before, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), below);
    EXPECT_TRUE(isScrolled());
    EXPECT_FALSE(below->visibleRegion().isEmpty());
}

TEST_F(ScrollPageTest, ScrollsByTheKeysThatNothingOnItWants)
{
    showIn(320, 120);
    const QScrollBar& bar = *page.verticalScrollBar();
    press(page, Qt::Key_PageDown);
    EXPECT_EQ(bar.value(), 120);
    press(page, Qt::Key_End);
    EXPECT_EQ(bar.value(), bar.maximum());
    press(page, Qt::Key_PageUp);
    EXPECT_LT(bar.value(), bar.maximum());
    press(page, Qt::Key_Home);
    EXPECT_EQ(bar.value(), 0);
    press(page, Qt::Key_Down);
    EXPECT_GT(bar.value(), 0);
}

} // namespace
} // namespace quillbrook
