#include "pages/kit/IconButton.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"

#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kPadding = 6; // makes the target large enough for a hand
constexpr double kRadius = 6;

} // namespace

IconButton::IconButton(
    const QString& symbol, int symbolPixels, const QString& name, QWidget* parent)
    : QAbstractButton(parent)
    , symbol(symbol)
    , symbolPixels(symbolPixels)
{
    setAccessibleName(name);
    setToolTip(name);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize IconButton::sizeHint() const
{
    return {symbolPixels + 2 * kPadding, symbolPixels + 2 * kPadding};
}

void IconButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = Look::secondaryText(palette());
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Look::faded(color, isDown() ? 0.3 : 0.16));
        painter.drawRoundedRect(rect(), kRadius, kRadius);
    }
    const QRectF place(kPadding, kPadding, symbolPixels, symbolPixels);
    Symbol::draw(painter, symbol, place, color);
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
