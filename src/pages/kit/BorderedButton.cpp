#include "pages/kit/BorderedButton.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace quillbrook {

namespace {

constexpr int kHeight = 24;
constexpr int kSidePadding = 9;
constexpr int kSymbolPixels = 12;
constexpr int kBehindSymbol = 5;
constexpr double kRadius = 5;

QFont textFont()
{
    return Look::font(TextStyle::subheadline);
}

} // namespace

BorderedButton::BorderedButton(
    const QString& symbol, const QString& text, const QString& name, QWidget* parent)
    : QAbstractButton(parent)
    , symbol(symbol)
{
    setText(text);
    setShortcut({}); // an ampersand is no mnemonic
    setAccessibleName(text.isEmpty() ? name : text);
    setToolTip(text.isEmpty() ? name : QString());
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BorderedButton::sizeHint() const
{
    const int gap = !symbol.isEmpty() && !text().isEmpty() ? kBehindSymbol : 0;
    const int symbolWidth = symbol.isEmpty() ? 0 : kSymbolPixels;
    const double textWidth = QFontMetricsF(textFont()).horizontalAdvance(text());
    return {2 * kSidePadding + symbolWidth + gap + static_cast<int>(std::ceil(textWidth)), kHeight};
}

void BorderedButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor text = isEnabled() ? Look::primaryText(palette()) : Look::secondaryText(palette());
    painter.setPen(QPen(Look::faded(text, 0.22), 1));
    painter.setBrush(Look::controlBackground(palette()));
    const QRectF body = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(body, kRadius, kRadius);
    if (isEnabled() && (isDown() || underMouse())) {
        painter.setBrush(Look::faded(text, isDown() ? 0.16 : 0.07));
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(body, kRadius, kRadius);
    }
    double left = kSidePadding;
    if (!symbol.isEmpty()) {
        Symbol::draw(painter, symbol,
            QRectF(left, (height() - kSymbolPixels) / 2.0, kSymbolPixels, kSymbolPixels), text);
        left += kSymbolPixels + kBehindSymbol;
    }
    drawShrunkText(painter, QRectF(left, 0, width() - left - kSidePadding + 1, height()),
        Qt::AlignLeft, this->text(), textFont(), text);
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
