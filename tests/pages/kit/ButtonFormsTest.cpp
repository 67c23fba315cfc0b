#include "pages/kit/BorderedButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/PlainButton.h"
#include "pages/kit/Symbol.h"
#include "support/Painting.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace quillbrook {
namespace {

bool hasSymbolIn(QWidget& widget, const QString& symbol, const QColor& color)
{
    return paintingOf(widget).hasFilled(Symbol::outline(symbol), color);
}

TEST(ButtonForms, ABorderedButtonGrowsWithItsForm)
{
    BorderedButton button("folder", "文件", {});
    const QSize small = button.sizeHint();
    EXPECT_EQ(small.height(), 24);
    button.setForm(ButtonForm::large);
    EXPECT_EQ(button.sizeHint().height(), 34);
    EXPECT_GT(button.sizeHint().width(), small.width());
    const QSize large = button.sizeHint();
    button.setForm(ButtonForm::prominent);
    EXPECT_EQ(button.sizeHint(), large);
}

TEST(ButtonForms, OnlyAProminentOneHasTheAccentColour)
{
    BorderedButton button("folder", "文件", {});
    button.resize(button.sizeHint());
    const QColor accent = Look::accent(QApplication::palette());
    EXPECT_FALSE(hasSymbolIn(button, "folder", accent));
    button.setForm(ButtonForm::prominent);
    button.resize(button.sizeHint());
    EXPECT_TRUE(hasSymbolIn(button, "folder", accent));
    EXPECT_EQ(paintingOf(button).allText(), "文件");
}

TEST(ButtonForms, APlainButtonNeedsNoSymbol)
{
    PlainButton with("folder", "跳过", 12, secondaryTint());
    PlainButton without({}, "跳过", 12, secondaryTint());
    EXPECT_LT(without.sizeHint().width(), with.sizeHint().width());
    without.resize(without.sizeHint());
    const Painting painting = paintingOf(without);
    EXPECT_EQ(painting.allText(), "跳过");
    EXPECT_TRUE(painting.shapes.empty());
}

} // namespace
} // namespace quillbrook
