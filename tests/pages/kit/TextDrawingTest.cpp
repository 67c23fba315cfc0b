#include "pages/kit/TextDrawing.h"

#include "pages/kit/FaceWidths.h"
#include "pages/kit/Look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

/// The rows of `image` in which something is drawn, from and to.
std::pair<int, int> drawnRows(const QImage& image)
{
    std::pair<int, int> rows{image.height(), -1};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                rows = {std::min(rows.first, y), std::max(rows.second, y)};
            }
        }
    }
    return rows;
}

QImage drawnLine(const QString& text, int width, double minimumScale = 1)
{
    QImage image(200, 40, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawShrunkText(painter, QRectF(0, 0, width, 40), Qt::AlignLeft, text, Look::monospacedFont(20),
        Qt::black, minimumScale);
    return image;
}

TEST(DrawShrunkText, StandsOnOneBaseLineInEveryScript)
{
    const QImage alone = drawnLine("20", 200);
    const QImage mixed = drawnLine("20 个", 200);
    const QRect figures(0, 0, 20, 40);
    EXPECT_EQ(drawnRows(alone.copy(figures)), drawnRows(mixed.copy(figures)));
}

TEST(DrawShrunkText, DrawsASpaceForATabOrALineBreak)
{
    EXPECT_EQ(drawnLine("a\tb\nc", 200), drawnLine("a b c", 200));
    EXPECT_EQ(faceWidths()("a\tb\nc", {}), faceWidths()("a b c", {}));
}

TEST(DrawShrunkText, ShrinksBeforeItElides)
{
    const auto heightOf = [](const QImage& image) {
        const auto rows = drawnRows(image);
        return rows.second - rows.first;
    };
    EXPECT_LT(heightOf(drawnLine("1234567890", 90, 0.6)), heightOf(drawnLine("1234567890", 200)));
    EXPECT_EQ(drawnLine("1234567890", 60, 0.6).copy(60, 0, 140, 40),
        drawnLine("", 60).copy(60, 0, 140, 40)); // nothing stands behind its place
}

/// The luminance of a pixel, from 0 to 1.
double luminance(QRgb pixel)
{
    const auto part = [](int byte) {
        const double value = byte / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(pixel)) + 0.7152 * part(qGreen(pixel)) + 0.0722 * part(qBlue(pixel));
}

/// The contrast between the letters of a label and the darkest that lies beside them: what nine of
/// ten of the letters' brightest pixels reach.
double contrastOf(const QFont& font, QColor ground, double opacity)
{
    QImage image(80, 20, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    drawTextOnColor(painter, QRectF(0, 0, 80, 20), Qt::AlignHCenter, "12m Mail", font, opacity);
    painter.end();
    double brightest = 0;
    for (int i = 0; i < 80 * 20; ++i) {
        brightest = std::max(brightest, luminance(image.pixel(i % 80, i / 80)));
    }
    std::vector<double> contrasts;
    for (int y = 2; y < 18; ++y) {
        for (int x = 2; x < 78; ++x) {
            const double light = luminance(image.pixel(x, y));
            double dark = 1;
            for (int i = 0; i < 25; ++i) {
                dark = std::min(dark, luminance(image.pixel(x - 2 + i % 5, y - 2 + i / 5)));
            }
            if (light > 0.9 * brightest) {
                contrasts.push_back((light + 0.05) / (dark + 0.05));
            }
        }
    }
    std::sort(contrasts.begin(), contrasts.end());
    return contrasts.at(contrasts.size() / 10);
}

TEST(DrawTextOnColor, CanBeReadOnEveryColor)
{
    for (const bool isDark : {false, true}) {
        Look::apply(isDark, std::nullopt);
        const QPalette palette = QApplication::palette();
        for (int name = 0; name <= static_cast<int>(SystemColor::gray); ++name) {
            const QColor color = Look::color(static_cast<SystemColor>(name), palette);
            EXPECT_GE(contrastOf(Look::systemFont(10, QFont::DemiBold), color, 1), 3) << name;
            EXPECT_GE(contrastOf(Look::monospacedFont(8), color, 0.85), 3) << name;
            EXPECT_GE(contrastOf(Look::systemFont(9, QFont::Medium), color, 0.7), 3) << name;
        }
    }
    Look::apply(false, std::nullopt);
}

TEST(DrawTextOnColor, PutsItsLettersWherePlainOnesStand)
{
    const QFont font = Look::systemFont(10, QFont::DemiBold);
    const auto onBlack = [&](bool isOnColor) {
        QImage image(120, 20, QImage::Format_RGB32);
        image.fill(Qt::black); // on which a dark rim can't be seen
        QPainter painter(&image);
        if (isOnColor) {
            drawTextOnColor(painter, QRectF(0, 0, 120, 20), Qt::AlignHCenter, "Mail 邮件", font);
        } else {
            drawShrunkText(
                painter, QRectF(0, 0, 120, 20), Qt::AlignHCenter, "Mail 邮件", font, Qt::white);
        }
        return image;
    };
    EXPECT_EQ(onBlack(true), onBlack(false));
}

TEST(DrawTextOnColor, LetsTheGroundThroughItsLettersAndNotItsRim)
{
    QImage image(80, 20, QImage::Format_RGB32);
    const QColor ground(0xF2, 0xCA, 0x92);
    image.fill(ground);
    QPainter painter(&image);
    const QFont font = Look::systemFont(16, QFont::Black); // with whole pixels inside its letters
    drawTextOnColor(painter, QRectF(0, 0, 80, 20), Qt::AlignHCenter, "HIT", font, 0.7);
    painter.end();
    int bluest = 0;
    for (int i = 0; i < 80 * 20; ++i) {
        bluest = std::max(bluest, qBlue(image.pixel(i % 80, i / 80)));
    }
    EXPECT_NEAR(bluest, 0.3 * ground.blue() + 0.7 * 255, 2);
}

TEST(DrawTextOnColor, PaintsAnEmojiOnce)
{
    const auto drawn = [](bool isOnColor) {
        QImage image(40, 20, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QPainter painter(&image);
        const QFont font = Look::systemFont(10);
        const QRectF place(0, 0, 40, 20);
        isOnColor ? drawTextOnColor(painter, place, Qt::AlignHCenter, "🧘", font)
                  : drawShrunkText(painter, place, Qt::AlignHCenter, "🧘", font, Qt::white);
        return image;
    };
    EXPECT_EQ(drawn(true), drawn(false));
}

/// How far two pictures lie apart when one of them is shifted by whole pixels.
double difference(const QImage& one, const QImage& other, int right, int down)
{
    double sum = 0;
    for (int y = 1; y < one.height() - 1; ++y) {
        for (int x = 1; x < one.width() - 1; ++x) {
            sum += std::abs(qGray(one.pixel(x + right, y + down)) - qGray(other.pixel(x, y)));
        }
    }
    return sum;
}

TEST(DrawTextOnColor, StandsInTheSamePlaceAtEveryScale)
{
    const QFont font = Look::systemFont(10, QFont::DemiBold);
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const auto onBlack = [&](bool isOnColor) {
            QImage image((QSizeF(121, 21) * scale).toSize(), QImage::Format_RGB32);
            image.setDevicePixelRatio(scale);
            image.fill(Qt::black);
            QPainter painter(&image);
            painter.translate(1, 1);
            const QRectF place(0, 0, 120, 20);
            const QColor color = QColor::fromRgbF(1, 1, 1, 0.7F);
            isOnColor ? drawTextOnColor(painter, place, Qt::AlignHCenter, "Mail 邮件", font, 0.7)
                      : drawShrunkText(painter, place, Qt::AlignHCenter, "Mail 邮件", font, color);
            return image;
        };
        const QImage one = onBlack(true);
        const QImage other = onBlack(false);
        const double inPlace = difference(one, other, 0, 0);
        for (const QPoint shift : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            EXPECT_LT(2 * inPlace, difference(one, other, shift.x(), shift.y())) << scale;
        }
    }
}

TEST(PlainToolTip, ShowsWhatLooksLikeMarkupAsItStands)
{
    EXPECT_EQ(plainToolTip("Mail — a < b"), "Mail — a < b");
    EXPECT_FALSE(plainToolTip("<img src=x>").contains("<img"));
    EXPECT_TRUE(plainToolTip("<img src=x>").contains("&lt;img src=x&gt;"));
}

} // namespace
} // namespace quillbrook
