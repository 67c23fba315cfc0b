#include "pages/kit/Symbol.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

namespace quillbrook {
namespace {

QImage drawn(const QString& name, int pixels, const QColor& color)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    Symbol::draw(painter, name, image.rect(), color);
    return image;
}

/// How much two drawings differ, in pixels of full coverage.
double difference(const QImage& a, const QImage& b)
{
    int sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            sum += std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y)));
        }
    }
    return sum / 255.0;
}

TEST(SymbolTest, StaysOnTheGrid)
{
    for (const QString& name : Symbol::names()) {
        const QRectF bounds = Symbol::outline(name).boundingRect();
        EXPECT_FALSE(bounds.isEmpty()) << name.toStdString();
        EXPECT_TRUE(QRectF(0, 0, 24, 24).contains(bounds)) << name.toStdString();
    }
}

TEST(SymbolTest, CanBeToldApartAtFourteenPixels)
{
    const QStringList names = Symbol::names();
    for (qsizetype i = 0; i < names.size(); ++i) {
        for (qsizetype j = i + 1; j < names.size(); ++j) {
            EXPECT_GT(difference(drawn(names[i], 14, Qt::black), drawn(names[j], 14, Qt::black)), 6)
                << names[i].toStdString() << " and " << names[j].toStdString();
        }
    }
}

TEST(SymbolTest, TakesTheColorItIsAskedFor)
{
    const QImage image = drawn("bolt.fill", 24, QColor(10, 200, 30));
    EXPECT_EQ(image.pixelColor(11, 12), QColor(10, 200, 30));
}

TEST(SymbolTest, IsSortedByName)
{
    QStringList sorted = Symbol::names();
    sorted.sort();
    EXPECT_EQ(Symbol::names(), sorted);
}

TEST(SymbolDeathTest, StopsAtANameWithoutADrawing)
{
    EXPECT_DEATH(Symbol::outline("no.such.symbol"), "no.such.symbol");
}

} // namespace
} // namespace quillbrook
