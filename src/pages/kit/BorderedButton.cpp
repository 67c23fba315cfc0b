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

constexpr double kSmallRadius = 5;
constexpr double kLargeRadius = 7;
constexpr double kAccentOpacity = 0.18;

struct Measures {
    int height;
    int sidePadding;
    int symbolPixels;
    int behindSymbol;
    double radius;
};

Measures measuresOf(ButtonForm form)
{
    return form == ButtonForm::small ? Measures{24, 9, 12, 5, kSmallRadius}
                                     : Measures{34, 18, 15, 7, kLargeRadius};
}

QFont textFont(ButtonForm form)
{
    return form == ButtonForm::small ? Look::font(TextStyle::subheadline)
                                     : Look::font(TextStyle::body, QFont::Medium);
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

void BorderedButton::setForm(ButtonForm newForm)
{
    form = newForm;
    updateGeometry();
    update();
}

QSize BorderedButton::sizeHint() const
{
    const Measures measures = measuresOf(form);
    const int gap = !symbol.isEmpty() && !text().isEmpty() ? measures.behindSymbol : 0;
    const int symbolWidth = symbol.isEmpty() ? 0 : measures.symbolPixels;
    const double textWidth = QFontMetricsF(textFont(form)).horizontalAdvance(text());
    return {2 * measures.sidePadding + symbolWidth + gap + static_cast<int>(std::ceil(textWidth)),
        measures.height};
}

void BorderedButton::paintEvent(QPaintEvent*)
{
    const auto [high, sidePadding, symbolPixels, behindSymbol, radius] = measuresOf(form);
    const bool isProminent = form == ButtonForm::prominent;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor text = isEnabled() ? Look::primaryText(palette()) : Look::secondaryText(palette());
    const QColor accent = Look::accent(palette());
    painter.setPen(QPen(isProminent ? accent : Look::faded(text, 0.22), 1));
    painter.setBrush(Look::controlBackground(palette()));
    const QRectF body = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(body, radius, radius);
    painter.setPen(Qt::NoPen);
    if (isProminent) {
        painter.setBrush(Look::faded(accent, kAccentOpacity));
        painter.drawRoundedRect(body, radius, radius);
    }
    if (isEnabled() && (isDown() || underMouse())) {
        painter.setBrush(Look::faded(text, isDown() ? 0.16 : 0.07));
        painter.drawRoundedRect(body, radius, radius);
    }
    double left = sidePadding;
    if (!symbol.isEmpty()) {
        Symbol::draw(painter, symbol,
            QRectF(left, (high - symbolPixels) / 2.0, symbolPixels, symbolPixels),
            isProminent ? accent : text);
        left += symbolPixels + behindSymbol;
    }
    drawShrunkText(painter, QRectF(left, 0, width() - left - sidePadding + 1, height()),
        Qt::AlignLeft, this->text(), textFont(form), text);
    drawFocusRing(painter, *this, rect(), radius);
}

} // namespace quillbrook
