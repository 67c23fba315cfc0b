#include "pages/kit/SymbolLabel.h"

#include "pages/kit/Symbol.h"

#include <QPainter>

#include <utility>

namespace quillbrook {

SymbolLabel::SymbolLabel(const QString& symbol, int pixels, Tint tint, QWidget* parent)
    : QWidget(parent)
    , symbol(symbol)
    , tint(std::move(tint))
{
    setFixedSize(pixels, pixels);
}

void SymbolLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Symbol::draw(painter, symbol, rect(), tint(palette()));
}

} // namespace quillbrook
