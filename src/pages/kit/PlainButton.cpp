#include "pages/kit/PlainButton.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace quillbrook {

namespace {

constexpr int kSidePadding = 20;
constexpr int kEdgePadding = 12; // above and below
constexpr int kBehindSymbol = 8;
constexpr double kRadius = 6;

} // namespace

PlainButton::PlainButton(
    const QString& symbol, const QString& text, int pixels, const Tint& tint, QWidget* parent)
    : QAbstractButton(parent)
    , symbol(symbol)
    , pixels(pixels)
    , tint(tint)
{
    setText(text);
    setShortcut({}); // an ampersand is no mnemonic
    setAccessibleName(text);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize PlainButton::sizeHint() const
{
    const QFontMetricsF metrics(Look::systemFont(pixels));
    const int symbolWidth = symbol.isEmpty() ? 0 : pixels + kBehindSymbol;
    const double width = 2 * kSidePadding + symbolWidth + metrics.horizontalAdvance(text());
    return {static_cast<int>(std::ceil(width)),
        static_cast<int>(std::ceil(lineHeight({.pixels = pixels}))) + 2 * kEdgePadding};
}

void PlainButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || underMouse()) {
        painter.fillRect(rect(), Look::faded(Look::primaryText(palette()), isDown() ? 0.14 : 0.06));
    }
    const QColor color = Look::color(tint, palette());
    QRectF place(kSidePadding, 0, width() - 2 * kSidePadding, height());
    if (!symbol.isEmpty()) {
        const QRectF drawing(kSidePadding, (height() - pixels) / 2.0, pixels, pixels);
        Symbol::draw(painter, symbol, drawing, color);
        place.setLeft(drawing.right() + kBehindSymbol);
    }
    drawShrunkText(painter, place, symbol.isEmpty() ? Qt::AlignHCenter : Qt::AlignLeft, text(),
        Look::systemFont(pixels), color);
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
