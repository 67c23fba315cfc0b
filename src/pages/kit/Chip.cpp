#include "pages/kit/Chip.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kNamePixels = 10;
constexpr int kDot = 7;
constexpr int kSpacing = 3;
constexpr int kSidePadding = 5;
constexpr int kHeight = 19;
constexpr int kLongestName = 150;
constexpr double kRadius = 4;

int nameWidth(const QString& name)
{
    const QFontMetricsF metrics(Look::systemFont(kNamePixels));
    return static_cast<int>(std::ceil(metrics.horizontalAdvance(name)));
}

} // namespace

Chip::Chip(Kind kind, const QString& name, DotColor dotColor, QWidget* parent)
    : QAbstractButton(parent)
    , kind(kind)
    , dotColor(std::move(dotColor))
{
    setText(name);
    setShortcut({}); // an ampersand in a name is no mnemonic
    setAccessibleName(name);
    if (nameWidth(name) > kLongestName) {
        setToolTip(plainToolTip(name));
    }
    setCheckable(kind == Kind::button);
    setFocusPolicy(kind == Kind::button ? Qt::StrongFocus : Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QAccessible::Role Chip::accessibleRole() const
{
    return kind == Kind::button ? QAccessible::Button : QAccessible::StaticText;
}

QSize Chip::sizeHint() const
{
    return {
        2 * kSidePadding + kDot + kSpacing + std::min(kLongestName, nameWidth(text())), kHeight};
}

void Chip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor dot = dotColor(palette());
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        isChecked() ? Look::faded(dot, 0.15) : Look::faded(Look::secondaryText(palette()), 0.05));
    painter.drawRoundedRect(rect(), kRadius, kRadius);

    const QRectF place(kSidePadding, (height() - kDot) / 2.0, kDot, kDot);
    painter.setBrush(dot);
    painter.setPen(isChecked() ? QPen(Qt::white, 1) : QPen(Qt::NoPen));
    painter.drawEllipse(place);

    const double left = place.right() + kSpacing;
    drawShrunkText(painter, QRectF(left, 0, width() - left - kSidePadding + 1, height()),
        Qt::AlignLeft, text(), Look::systemFont(kNamePixels), Look::primaryText(palette()));
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
