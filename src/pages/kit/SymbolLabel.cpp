#include "pages/kit/SymbolLabel.h"

#include "pages/kit/Symbol.h"

#include <QPainter>

#include <utility>

namespace quillbrook {

SymbolLabel::SymbolLabel(const QString& symbol, int pixels, const Tint& tint, QWidget* parent)
    : SymbolLabel(symbol, pixels, Look::following(tint), parent)
{
}

SymbolLabel::SymbolLabel(const QString& symbol, int pixels, PaletteColor color, QWidget* parent)
    : QWidget(parent)
    , symbol(symbol)
    , color(std::move(color))
{
    setFixedSize(pixels, pixels);
}

void SymbolLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Symbol::draw(painter, symbol, rect(), color(palette()));
}

} // namespace quillbrook
