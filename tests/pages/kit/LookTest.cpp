#include "pages/kit/Look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>

#include <algorithm>
#include <cmath>

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

TEST(Look, WritesOnAnAccentWhatCanBeReadThere)
{
    const QColor dark(0x26, 0x26, 0x26);
    const auto textOn = [](Color accent) {
        Look::apply(false, accent);
        return Look::textOnAccent(QApplication::palette());
    };
    EXPECT_EQ(textOn({0x00, 0x7A, 0xFF}), QColor(Qt::white));
    EXPECT_EQ(textOn({0x00, 0x00, 0x00}), QColor(Qt::white));
    EXPECT_EQ(textOn({0xC8, 0x88, 0x00}), QColor(Qt::white)); // 3.01 to 1
    EXPECT_EQ(textOn({0xC8, 0x8A, 0x00}), dark); // 2.96 to 1
    EXPECT_EQ(textOn({0xFF, 0xCC, 0x00}), dark);
    EXPECT_EQ(textOn({0xFF, 0xFF, 0xFF}), dark);
    Look::apply(false, std::nullopt);
}

/// The contrast of two opaque colours, from 1 to 21.
double contrast(const QColor& one, const QColor& other)
{
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
            + 0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Look, LetsLinksBeReadInSmallType)
{
    for (const bool isDark : {false, true}) {
        Look::apply(isDark, std::nullopt);
        const QPalette palette = QApplication::palette();
        EXPECT_GT(contrast(Look::link(palette), Look::windowBackground(palette)), 4.5);
        EXPECT_GT(contrast(Look::link(palette), Look::controlBackground(palette)), 4.5);
        EXPECT_NEAR(Look::link(palette).hslHue(), Look::accent(palette).hslHue(), 3);
    }
    Look::apply(false, std::nullopt);
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
    for (const QFont& font : {Look::monospacedFont(20, QFont::Bold), Look::monospacedFont(10)}) {
        const QFontMetricsF metrics(font);
        for (const char digit : {'0', '2', '3', '4', '5', '6', '7', '8', '9'}) {
            EXPECT_DOUBLE_EQ(
                metrics.horizontalAdvance(QChar(digit)), metrics.horizontalAdvance('1'));
        }
    }
}

/// In how many places there is ink along the height `y` of a letter whose base line lies at 14.
int stemsOf(QChar letter, int pixels, int y)
{
    QImage image(40, 20, QImage::Format_Grayscale8);
    image.fill(255);
    QPainter painter(&image);
    painter.setFont(Look::monospacedFont(pixels));
    painter.drawText(QPointF(4, 14), letter);
    painter.end();
    int stems = 0;
    for (int x = 1; x < 39; ++x) {
        const auto ink = [&](int place) { return 255 - qGray(image.pixel(place, y)); };
        stems += ink(x) > ink(x - 1) && ink(x) >= ink(x + 1) && ink(x) > 60 ? 1 : 0;
    }
    return stems;
}

TEST(Look, KeepsTheStemsOfSmallLettersApart)
{
    for (const int pixels : {7, 8, 9, 20}) {
        EXPECT_EQ(stemsOf('m', pixels, 12), 3) << pixels; // below the arches
    }
}

TEST(Look, WritesCodeInLettersOfOneWidth)
{
    const QFontMetricsF metrics(Look::codeFont(TextStyle::caption));
    EXPECT_EQ(metrics.horizontalAdvance("iii"), metrics.horizontalAdvance("WWW"));
    EXPECT_EQ(
        Look::codeFont(TextStyle::caption).pixelSize(), Look::font(TextStyle::caption).pixelSize());
}

TEST(Look, LeavesSmallZerosOpen)
{
    for (int pixels = 7; pixels <= 11; ++pixels) {
        const int middle = 14 - pixels * 3 / 8;
        EXPECT_EQ(stemsOf('0', pixels, middle), 2) << pixels;
    }
}

TEST(Look, CutsMenusAndToolTipsOutWhereWindowsCantBlend)
{
    for (const bool canBlend : {true, false}) {
        Look::setCanBlendWindows([canBlend] { return canBlend; });
        QMenu menu;
        menu.addAction("action");
        menu.popup({10, 10});
        EXPECT_EQ(menu.testAttribute(Qt::WA_TranslucentBackground), canBlend);
        EXPECT_EQ(menu.mask().isEmpty(), canBlend);
        EXPECT_TRUE(canBlend || !menu.mask().contains(QPoint(0, 0)));
        menu.close();
    }
    Look::setCanBlendWindows({});
}

TEST(Look, UnderlinesAMenuBarWithoutAHole)
{
    Look::apply(false, std::nullopt);
    QMenuBar bar;
    bar.addMenu("Quillbrook");
    bar.resize(300, bar.sizeHint().height());
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        QImage image((QSizeF(bar.size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        bar.render(&image);
        const int last = image.height() - 1;
        const QRgb line = image.pixel(0, last);
        EXPECT_NE(line, image.pixel(0, last - 4)) << scale;
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(image.pixel(x, last), line) << scale << " " << x;
        }
    }
}

TEST(Look, FadesOnTopOfAnOpacity)
{
    EXPECT_NEAR(Look::faded(QColor(0, 0, 0, 128), 0.5).alphaF(), 0.25, 0.01);
}

} // namespace
} // namespace quillbrook
