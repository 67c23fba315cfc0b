#include "pages/kit/Symbol.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>

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

TEST(SymbolTest, DrawsAFrameForANameWithoutADrawing)
{
    EXPECT_FALSE(Symbol::outline("no.such.symbol").isEmpty());
    EXPECT_GT(
        difference(drawn("no.such.symbol", 14, Qt::black), drawn("app.badge", 14, Qt::black)), 6);
}

/// Every name that stands in the sources as that of a symbol.
std::map<std::string, std::filesystem::path> namesInUse()
{
    const std::array forms = {
        std::regex(R"re("([a-z][a-z0-9]*(?:\.[a-z0-9]+)*)",\s*(?:SystemColor::|Tint\b))re"),
        std::regex(
            R"re((?:IconButton|BorderedButton|SymbolLabel|EmptyState)(?:>)?\(\s*"([^"]+)")re"),
        std::regex(R"re(Symbol::(?:draw\([^"]*|icon\()"([^"]+)")re"),
        std::regex(R"re(symbol = "([^"]+)")re"),
        // Two words and more with points between them are the form of a symbol's name alone.
        std::regex(R"re("([a-z]+(?:\.[a-z0-9]+)+)")re"),
    };
    const std::regex noSymbol(R"((?:cn|org|com)\..*|.*\.(?:log|db|txt|json|csv|desktop|png|svg))");
    std::map<std::string, std::filesystem::path> names;
    for (const char* folder : {"pages", "shell"}) {
        for (const auto& file : std::filesystem::recursive_directory_iterator(
                 std::filesystem::path(QUILLBROOK_SOURCES) / folder)) {
            if (!file.is_regular_file() || file.path().stem() == "SymbolTable") {
                continue;
            }
            std::ifstream stream(file.path());
            const std::string text(std::istreambuf_iterator<char>(stream), {});
            for (const std::regex& form : forms) {
                for (std::sregex_iterator match(text.begin(), text.end(), form), end; match != end;
                     ++match) {
                    if (!std::regex_match((*match)[1].str(), noSymbol)) {
                        names.emplace((*match)[1], file.path());
                    }
                }
            }
        }
    }
    return names;
}

TEST(SymbolTest, HasADrawingForEachNameInUse)
{
    const QStringList drawn = Symbol::names();
    const auto used = namesInUse();
    EXPECT_GT(used.size(), 15U);
    for (const auto& [name, file] : used) {
        EXPECT_TRUE(drawn.contains(QString::fromStdString(name))) << name << " in " << file;
    }
}

} // namespace
} // namespace quillbrook
