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
constexpr int kLongestName = 150;
constexpr int kFadeMs = 200;
constexpr double kRadius = 4;

struct Sizes {
    int dot;
    int spacing; // between dot and name
    int sidePadding;
    int height;
};

constexpr Sizes kChip{.dot = 7, .spacing = 3, .sidePadding = 5, .height = 19};
constexpr Sizes kPlain{.dot = 8, .spacing = 6, .sidePadding = 0, .height = 13};

constexpr const Sizes& sizesOf(Chip::Kind kind)
{
    return kind == Chip::Kind::plain ? kPlain : kChip;
}

int nameWidth(const QString& name)
{
    const QFontMetricsF metrics(Look::systemFont(kNamePixels));
    return static_cast<int>(std::ceil(metrics.horizontalAdvance(oneLine(name))));
}

} // namespace

Chip::Chip(Kind kind, const QString& name, PaletteColor dotColor, QWidget* parent)
    : QAbstractButton(parent)
    , kind(kind)
    , dotColor(std::move(dotColor))
{
    setText(name);
    setShortcut({}); // an ampersand in a name is no mnemonic
    setAccessibleName(name);
    setHelp({});
    setCheckable(kind == Kind::button);
    setFocusPolicy(kind == Kind::button ? Qt::StrongFocus : Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    highlight.setDuration(kFadeMs);
    highlight.setEasingCurve(QEasingCurve::InOutQuad);
    highlight.setStartValue(0.0);
    highlight.setEndValue(1.0);
    connect(&highlight, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(this, &QAbstractButton::toggled, this, &Chip::followChecked);
}

void Chip::followChecked(bool isChecked)
{
    highlight.setDirection(isChecked ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    if (isVisible()) {
        highlight.start();
    } else {
        highlight.setCurrentTime(isChecked ? kFadeMs : 0);
    }
}

QAccessible::Role Chip::accessibleRole() const
{
    return kind == Kind::button ? QAccessible::Button : QAccessible::StaticText;
}

Chip::Chip(Kind kind, const QString& name, const Tint& dot, QWidget* parent)
    : Chip(kind, name, Look::following(dot), parent)
{
}

void Chip::setDot(const Tint& tint)
{
    dotColor = Look::following(tint);
    update();
}

void Chip::setHelp(const QString& help)
{
    const bool isCut = nameWidth(text()) > kLongestName;
    setToolTip(plainToolTip(help.isEmpty() && isCut ? text() : help));
}

QSize Chip::sizeHint() const
{
    const Sizes& sizes = sizesOf(kind);
    const int width = 2 * sizes.sidePadding + sizes.dot + sizes.spacing
        + std::min(kLongestName, nameWidth(text()));
    return {width, sizes.height};
}

void Chip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Sizes& sizes = sizesOf(kind);
    const QColor dot = dotColor(palette());
    const double strength = highlight.currentValue().toDouble();
    painter.setPen(Qt::NoPen);
    if (kind != Kind::plain) {
        painter.setBrush(Look::faded(Look::secondaryText(palette()), 0.05 * (1 - strength)));
        painter.drawRoundedRect(rect(), kRadius, kRadius);
        painter.setBrush(Look::faded(dot, 0.15 * strength));
        painter.drawRoundedRect(rect(), kRadius, kRadius);
    }

    const QRectF place(sizes.sidePadding, (height() - sizes.dot) / 2.0, sizes.dot, sizes.dot);
    painter.setBrush(dot);
    painter.setPen(QPen(Look::faded(Qt::white, strength), 1));
    painter.drawEllipse(place);

    const double left = place.right() + sizes.spacing;
    const QColor text
        = kind == Kind::plain ? Look::secondaryText(palette()) : Look::primaryText(palette());
    drawShrunkText(painter, QRectF(left, 0, width() - left - sizes.sidePadding + 1, height()),
        Qt::AlignLeft, this->text(), Look::systemFont(kNamePixels), text);
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
