#include "pages/kit/TextDrawing.h"

#include "pages/kit/Look.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <utility>

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

TEST(PlainToolTip, ShowsWhatLooksLikeMarkupAsItStands)
{
    EXPECT_EQ(plainToolTip("Mail — a < b"), "Mail — a < b");
    EXPECT_FALSE(plainToolTip("<img src=x>").contains("<img"));
    EXPECT_TRUE(plainToolTip("<img src=x>").contains("&lt;img src=x&gt;"));
}

} // namespace
} // namespace quillbrook
