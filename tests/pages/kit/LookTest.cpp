#include "pages/kit/Look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

namespace quillbrook {
namespace {

TEST(Look, GivesEachAppearanceItsShades)
{
    Look::apply(false, std::nullopt);
    const QPalette light = QApplication::palette();
    Look::apply(true, std::nullopt);
    const QPalette dark = QApplication::palette();
    EXPECT_FALSE(Look::isDark(light));
    EXPECT_TRUE(Look::isDark(dark));
    EXPECT_EQ(Look::color(SystemColor::orange, light), QColor(0xFF, 0x95, 0x00));
    EXPECT_EQ(Look::color(SystemColor::orange, dark), QColor(0xFF, 0x9F, 0x0A));
    EXPECT_EQ(Look::windowBackground(light), QColor(0xEC, 0xEC, 0xEC));
    EXPECT_EQ(Look::controlBackground(dark), QColor(0x2A, 0x2A, 0x2C));
    Look::apply(false, std::nullopt);
}

TEST(Look, TakesTheDesktopsAccent)
{
    Look::apply(false, Color{1, 2, 3});
    EXPECT_EQ(Look::accent(QApplication::palette()), QColor(1, 2, 3));
    Look::apply(false, std::nullopt);
    EXPECT_EQ(Look::accent(QApplication::palette()), QColor(0x00, 0x7A, 0xFF));
}

TEST(Look, FindsItsFontsByName)
{
    EXPECT_EQ(QFontInfo(Look::systemFont(13)).family(), "Inter");
    EXPECT_EQ(QFontInfo(Look::monospacedFont(13)).family(), "JetBrains Mono");
    const QFontInfo title(Look::serifFont(32, QFont::Black));
    EXPECT_EQ(title.family(), "Vollkorn");
    EXPECT_EQ(title.weight(), QFont::Black);
    EXPECT_EQ(title.pixelSize(), 32);
}

TEST(Look, HasDigitsOfOneWidthWhereFiguresStand)
{
    const QFontMetricsF metrics(Look::monospacedFont(20, QFont::Bold));
    for (const char digit : {'0', '2', '3', '4', '5', '6', '7', '8', '9'}) {
        EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(QChar(digit)), metrics.horizontalAdvance('1'));
    }
}

TEST(Look, FadesOnTopOfAnOpacity)
{
    EXPECT_NEAR(Look::faded(QColor(0, 0, 0, 128), 0.5).alphaF(), 0.25, 0.01);
}

} // namespace
} // namespace quillbrook
