#include "pages/kit/FigureCard.h"

#include "pages/kit/Look.h"
#include "pages/kit/RoundedFill.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kPadding = 16;
constexpr int kSpacing = 8;
constexpr int kSymbolPixels = 20;
constexpr int kTitlePixels = 12;
constexpr double kRadius = 12;
constexpr double kGroundOpacity = 0.08;
constexpr int kMinimumWidth = 96;

QFont valueFont(int pixels)
{
    return Look::monospacedFont(pixels, QFont::Bold);
}

QFont titleFont()
{
    return Look::systemFont(kTitlePixels);
}

/// Lines of a set height, as the fonts of a mixed text differ in theirs.
int lineHeight(int pixels)
{
    return pixels * 5 / 4;
}

} // namespace

FigureCard::FigureCard(Shrinking shrinking, QWidget* parent)
    : FigureCard(shrinking, kValuePixels, parent)
{
}

FigureCard::FigureCard(Shrinking shrinking, int valuePixels, QWidget* parent)
    : QWidget(parent)
    , shrinking(shrinking)
    , valuePixels(valuePixels)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FigureCard::setFigure(
    const QString& newSymbol, SystemColor newColor, const QString& newValue, const QString& title)
{
    symbol = newSymbol;
    color = newColor;
    value = newValue;
    if (accessibleName() != title) {
        setAccessibleName(title);
    }
    // The value once more as description: Linux hands on no text as an element's value, nor its
    // change.
    if (accessibleDescription() != value) {
        setAccessibleDescription(value);
    }
    updateToolTip();
    update();
}

void FigureCard::resizeEvent(QResizeEvent*)
{
    updateToolTip();
}

void FigureCard::updateToolTip()
{
    const double room = width() - 2 * kPadding;
    const auto isCut = [room](const QString& text, const QFont& font, double minimumScale) {
        return QFontMetricsF(font).horizontalAdvance(text) * minimumScale > room;
    };
    const bool isAnyCut = isCut(value, valueFont(valuePixels), shrinking.value)
        || isCut(accessibleName(), titleFont(), shrinking.title);
    setToolTip(isAnyCut ? value + '\n' + accessibleName() : QString());
}

QSize FigureCard::sizeHint() const
{
    const int height = 2 * kPadding + kSymbolPixels + kSpacing + lineHeight(valuePixels) + kSpacing
        + lineHeight(kTitlePixels);
    return {180, height};
}

QSize FigureCard::minimumSizeHint() const
{
    return {kMinimumWidth, sizeHint().height()};
}

void FigureCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor tint = Look::color(color, palette());
    fillRounded(painter, rect(), kRadius, Look::faded(tint, kGroundOpacity));

    QRectF line(kPadding, kPadding, width() - 2 * kPadding, kSymbolPixels);
    Symbol::draw(painter, symbol, line, tint);
    line.setRect(kPadding, line.bottom() + kSpacing, line.width(), lineHeight(valuePixels));
    drawShrunkText(painter, line, Qt::AlignHCenter, value, valueFont(valuePixels),
        Look::primaryText(palette()), shrinking.value);
    line.setRect(kPadding, line.bottom() + kSpacing, line.width(), lineHeight(kTitlePixels));
    drawShrunkText(painter, line, Qt::AlignHCenter, accessibleName(), titleFont(),
        Look::secondaryText(palette()), shrinking.title);
}

} // namespace quillbrook
