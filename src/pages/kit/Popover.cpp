#include "pages/kit/Popover.h"

#include "pages/kit/Look.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace quillbrook {

namespace {

constexpr int kPadding = 20;
constexpr int kShadow = 14; // room for it on all sides
constexpr int kShadowFall = 3;
constexpr double kShadowStrength = 0.05; // of its darkest ring
constexpr int kArrowHeight = 8;
constexpr int kArrowWidth = 20;
constexpr int kGap = 1; // between the anchor and the arrow
constexpr double kRadius = 10;

int clampedInto(int value, int from, int to)
{
    return std::clamp(value, from, std::max(from, to));
}

/// A soft shadow that falls a little downwards.
void drawShadow(QPainter& painter, const QRectF& body)
{
    painter.setPen(Qt::NoPen);
    constexpr int kRings = kShadow - kShadowFall;
    for (int ring = kRings; ring > 0; --ring) {
        const double nearness = 1 - static_cast<double>(ring) / (kRings + 1);
        painter.setBrush(Look::faded(Qt::black, kShadowStrength * nearness * nearness));
        painter.drawRoundedRect(body.adjusted(-ring, kShadowFall - ring, ring, kShadowFall + ring),
            kRadius + ring, kRadius + ring);
    }
}

} // namespace

Popover::Popover(int width, QWidget* anchor)
    : QWidget(anchor, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint)
    , anchor(anchor)
    , column(new QVBoxLayout(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::StrongFocus);
    setFixedWidth(width + 2 * kShadow);
}

void Popover::open()
{
    const QRect anchorPlace(anchor->mapToGlobal(QPoint()), anchor->size());
    constexpr int kAround = kShadow + kPadding;
    column->setContentsMargins(kAround, kAround + kArrowHeight, kAround, kAround);
    resize(width(),
        column->hasHeightForWidth() ? column->totalHeightForWidth(width()) : sizeHint().height());
    placeAt(anchorPlace, anchor->screen()->availableGeometry());
    if (!Look::canBlendWindows()) {
        setMask(QRegion(outline().toFillPolygon().toPolygon()));
    }
    focusBefore = anchor->window()->focusWidget();
    show();
    setFocus(Qt::PopupFocusReason); // so that it is read
}

void Popover::placeAt(const QRect& anchorPlace, const QRect& within)
{
    const int needed = height() - 2 * kShadow + kGap;
    const int roomBelow = within.bottom() - anchorPlace.bottom();
    const int roomAbove = anchorPlace.top() - within.top();
    isAbove = needed > roomBelow && roomAbove > roomBelow;
    if (isAbove) {
        QMargins margins = column->contentsMargins();
        margins += QMargins(0, -kArrowHeight, 0, kArrowHeight);
        column->setContentsMargins(margins);
    }
    const QPoint target = anchorPlace.center();
    const int top = isAbove ? anchorPlace.top() - kGap + kShadow - height()
                            : anchorPlace.bottom() + 1 + kGap - kShadow;
    // The shadow may reach over the screen's edge, the body may not.
    move(clampedInto(target.x() - width() / 2, within.left() - kShadow,
             within.right() + 1 + kShadow - width()),
        clampedInto(top, within.top() - kShadow, within.bottom() + 1 + kShadow - height()));
    constexpr int kCorner = kShadow + static_cast<int>(kRadius) + kArrowWidth / 2;
    tipX = clampedInto(target.x() - x(), kCorner, width() - kCorner);
}

QRect Popover::body() const
{
    const QRect whole = rect().adjusted(kShadow, kShadow, -kShadow, -kShadow);
    return isAbove ? whole.adjusted(0, 0, 0, -kArrowHeight) : whole.adjusted(0, kArrowHeight, 0, 0);
}

QPoint Popover::tip() const
{
    return {tipX, isAbove ? height() - kShadow : kShadow};
}

QPainterPath Popover::outline() const
{
    const QRectF place = QRectF(body()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(place, kRadius, kRadius);
    const double base = isAbove ? place.bottom() - 1 : place.top() + 1;
    const QPointF top = tip();
    const double half = kArrowWidth / 2.0;
    QPainterPath arrow(QPointF(tipX - half, base));
    arrow.cubicTo({tipX - half / 2, base}, {tipX - 2.0, top.y()}, top);
    arrow.cubicTo({tipX + 2.0, top.y()}, {tipX + half / 2, base}, {tipX + half, base});
    arrow.closeSubpath();
    return path.united(arrow);
}

void Popover::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (mask().isEmpty()) {
        drawShadow(painter, body());
    }
    painter.setBrush(Look::controlBackground(palette()));
    painter.setPen(QPen(Look::faded(Look::primaryText(palette()), 0.16), 1));
    painter.drawPath(outline());
}

void Popover::mousePressEvent(QMouseEvent* event)
{
    if (outline().contains(event->position())) {
        event->accept();
    } else {
        close(); // a click on the shadow is one elsewhere
    }
}

void Popover::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (focusBefore && focusBefore->isVisible()) {
        focusBefore->setFocus(Qt::PopupFocusReason);
    }
    emit closed();
}

} // namespace quillbrook
