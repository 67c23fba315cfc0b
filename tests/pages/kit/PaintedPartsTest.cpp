#include "pages/kit/Chip.h"
#include "pages/kit/FigureCard.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/Legend.h"
#include "pages/kit/LinkButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkPainter.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TagLabel.h"
#include "support/Painting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include <QApplication>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;

QColor shade(SystemColor color)
{
    return Look::color(color, QApplication::palette());
}

TEST(PaintedFigureCard, HasItsSymbolItsValueAndItsTitle)
{
    FigureCard card({});
    card.resize(200, 110);
    card.setFigure("clock.fill", SystemColor::orange, "3h5m", "title");
    const Painting painting = paintingOf(card);
    EXPECT_TRUE(painting.hasFilled(Symbol::outline("clock.fill"), shade(SystemColor::orange)));
    EXPECT_EQ(painting.allText(), "3h5mtitle");
}

TEST(PaintedChip, HasADotOfItsColourBeforeItsName)
{
    Chip chip(Chip::Kind::label, "Mail", Tint{SystemColor::orange});
    EXPECT_THAT(paintingOf(chip).circles(), ElementsAre(shade(SystemColor::orange)));
    EXPECT_EQ(paintingOf(chip).allText(), "Mail");
    chip.setDot(Tint{SystemColor::green});
    EXPECT_THAT(paintingOf(chip).circles(), ElementsAre(shade(SystemColor::green)));
}

TEST(PaintedChip, HasARingAndAGroundWhileItIsHighlighted)
{
    Chip chip(Chip::Kind::button, "Mail", Tint{SystemColor::orange});
    const auto ringStrength = [&chip] { return paintingOf(chip).shapes.back().line.alphaF(); };
    EXPECT_EQ(ringStrength(), 0);
    chip.setChecked(true);
    EXPECT_EQ(ringStrength(), 1);
    EXPECT_NEAR(paintingOf(chip).shapes[1].fill.alphaF(), 0.15, 0.01);
}

TEST(PaintedLegend, GivesEachChipItsOwnColour)
{
    Legend legend({});
    legend.resize(400, 40);
    legend.setEntries({{.name = "Mail", .tint = {SystemColor::orange}},
        {.name = "Web", .tint = {SystemColor::green}}});
    EXPECT_THAT(paintingOf(legend).circles(),
        ElementsAre(shade(SystemColor::orange), shade(SystemColor::green)));
    legend.setEntries({{.name = "Web", .tint = {SystemColor::red}}});
    EXPECT_THAT(paintingOf(legend).circles(), ElementsAre(shade(SystemColor::red)));
}

TEST(PaintedTag, StandsOnItsGroundLevelWithItsNeighbours)
{
    const TagForm form{.ground = {SystemColor::orange, 0.1}, .sidePadding = 8, .edgePadding = 4};
    const QFont font = Look::font(TextStyle::caption);
    TagLabel tag("v1.0", font, form);
    const TagLabel chinese("构建", font, form);
    tag.resize(tag.sizeHint());
    EXPECT_EQ(tag.sizeHint().height(), chinese.sizeHint().height());
    EXPECT_EQ(tag.sizeHint().height(), qCeil(QFontMetricsF(font).height()) + 8);
    EXPECT_EQ(tag.sizeHint().width(), qCeil(QFontMetricsF(font).horizontalAdvance("v1.0")) + 16);
    const Painting painting = paintingOf(tag);
    EXPECT_EQ(painting.allText(), "v1.0");
    EXPECT_EQ(
        painting.shapes.at(0).fill.rgba(), Look::faded(shade(SystemColor::orange), 0.1).rgba());
}

TEST(PaintedLink, HasTheColourOfLinks)
{
    LinkButton link("more & more", Look::font(TextStyle::callout));
    link.resize(link.sizeHint());
    const Painting painting = paintingOf(link);
    EXPECT_EQ(painting.allText(), "more & more");
    EXPECT_EQ(painting.texts.at(0).color.rgba(), Look::link(QApplication::palette()).rgba());
}

TEST(PaintedSymbols, StandOnButtonsAndAlone)
{
    IconButton button("info.circle", 14, "about");
    button.resize(button.sizeHint());
    EXPECT_TRUE(paintingOf(button).hasFilled(
        Symbol::outline("info.circle"), Look::secondaryText(button.palette())));
    SymbolLabel label("heart.circle", 20, Tint{SystemColor::pink});
    EXPECT_TRUE(
        paintingOf(label).hasFilled(Symbol::outline("heart.circle"), shade(SystemColor::pink)));
}

Mark fullMark()
{
    Mark mark = boxMark({0, 0, 100, 40}, {SystemColor::orange, 0.5});
    mark.texts = {{.place = {0, 0, 100, 20}, .text = "on the page", .tint = {SystemColor::green}},
        {.place = {0, 20, 100, 20}, .text = "on a colour", .tint = {kWhite}, .isOnColor = true}};
    mark.symbols
        = {{.place = {0, 0, 20, 20}, .symbol = "heart.circle", .tint = {SystemColor::pink}}};
    return mark;
}

TEST(PaintedMark, HasItsFillsItsSymbolsAndItsTexts)
{
    const Painting painting = paintingOf(
        [](QPainter& painter) { paintMark(painter, fullMark(), QApplication::palette()); });
    EXPECT_EQ(painting.shapes[0].fill, Look::faded(shade(SystemColor::orange), 0.5));
    EXPECT_TRUE(painting.hasFilled(Symbol::outline("heart.circle"), shade(SystemColor::pink)));
    EXPECT_EQ(painting.allText(), "on the page"); // the other one is drawn as glyphs
    EXPECT_EQ(painting.texts.front().color, shade(SystemColor::green));
    EXPECT_EQ(painting.texts.back().color, QColor(Qt::white));
}

TEST(PaintedMark, HasADarkRimRoundATextOnAColour)
{
    Mark mark = fullMark();
    mark.symbols.clear();
    const auto rims = [&mark] {
        const Painting painting = paintingOf(
            [&](QPainter& painter) { paintMark(painter, mark, QApplication::palette()); });
        return std::count_if(painting.texts.begin(), painting.texts.end(),
            [](const auto& text) { return text.color.rgb() == qRgb(0, 0, 0); });
    };
    EXPECT_GT(rims(), 0);
    mark.texts.pop_back();
    EXPECT_EQ(rims(), 0);
}

TEST(PaintedMarkView, HasAllItsMarksInTheirOrder)
{
    MarkView view("picture");
    view.resize(100, 40);
    view.setPicture([](Size, const TextWidth&) {
        return std::vector<Mark>{boxMark({0, 0, 50, 40}, {SystemColor::orange}),
            boxMark({50, 0, 50, 40}, {SystemColor::green})};
    });
    const Painting painting = paintingOf(view);
    ASSERT_EQ(painting.shapes.size(), 2U);
    EXPECT_EQ(painting.shapes[0].fill, shade(SystemColor::orange));
    EXPECT_EQ(painting.shapes[1].fill, shade(SystemColor::green));
}

} // namespace
} // namespace quillbrook
