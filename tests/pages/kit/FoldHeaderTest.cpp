#include "pages/kit/FoldHeader.h"
#include "pages/kit/Line.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace quillbrook {
namespace {

using testing::ElementsAre;

QAccessibleInterface& accessibleOf(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

TEST(FoldHeaderTest, IsAButtonWithItsNote)
{
    FoldHeader header("12-31");
    header.setNote("3 次告警");
    header.show();
    EXPECT_THAT(elementsOf(header, QAccessible::Button),
        ElementsAre(Element{QAccessible::Button, "12-31", "3 次告警"}));
    EXPECT_EQ(accessibleOf(header).text(QAccessible::Description), "3 次告警");
    EXPECT_EQ(header.sizeHint().height(), 36);
}

TEST(FoldHeaderTest, TellsWhetherItIsOpen)
{
    FoldHeader header("12-31");
    EXPECT_TRUE(accessibleOf(header).state().expandable);
    EXPECT_TRUE(accessibleOf(header).state().collapsed);
    EXPECT_FALSE(accessibleOf(header).state().expanded);
    header.setChecked(true);
    EXPECT_TRUE(accessibleOf(header).state().expanded);
    EXPECT_FALSE(accessibleOf(header).state().collapsed);
}

TEST(FoldHeaderTest, OpensAndFoldsByKeyAndClick)
{
    FoldHeader header("12-31");
    header.show();
    press(header, Qt::Key_Space);
    EXPECT_TRUE(header.isChecked());
    header.click();
    EXPECT_FALSE(header.isChecked());
}

TEST(FoldHeaderTest, TurnsItsChevron)
{
    FoldHeader header("12-31");
    header.resize(400, header.sizeHint().height());
    const auto chevron = [&] { return header.grab(QRect(340, 0, 60, 36)).toImage(); };
    const QImage folded = chevron();
    header.setChecked(true);
    EXPECT_NE(folded, chevron());
}

TEST(FoldHeaderTest, DrawsTheLineThatDividesItFromThePartAbove)
{
    FoldHeader header("12-31");
    header.setDivided(true);
    EXPECT_EQ(header.sizeHint().height(), 37);
    header.resize(400, 37);
    header.setAutoFillBackground(true);
    const QImage image = header.grab().toImage();
    const QColor ground = image.pixelColor(0, 0);
    EXPECT_EQ(image.pixelColor(23, 0), ground);
    EXPECT_NE(image.pixelColor(24, 0), ground);
    EXPECT_NE(image.pixelColor(375, 0), ground);
    EXPECT_EQ(image.pixelColor(376, 0), ground);
    EXPECT_NE(image.pixelColor(24, 1), image.pixelColor(24, 0));
    EXPECT_EQ(image.pixelColor(24, 1), image.pixelColor(0, 1));
}

TEST(LineTest, StaysWithinItsMargins)
{
    Line line;
    line.resize(100, 1);
    line.setContentsMargins(24, 0, 10, 0);
    line.setAutoFillBackground(true);
    const QImage image = line.grab().toImage();
    const QColor ground = image.pixelColor(0, 0);
    EXPECT_EQ(image.pixelColor(23, 0), ground);
    EXPECT_NE(image.pixelColor(24, 0), ground);
    EXPECT_NE(image.pixelColor(89, 0), ground);
    EXPECT_EQ(image.pixelColor(90, 0), ground);
}

} // namespace
} // namespace quillbrook
