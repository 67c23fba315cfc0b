#include "pages/kit/Popover.h"

#include "pages/kit/Look.h"

#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace quillbrook {

namespace {

constexpr int kPadding = 20;
constexpr int kGap = 6; // between the anchor and the popover

} // namespace

Popover::Popover(int width, QWidget* anchor)
    : QFrame(anchor, Qt::Popup)
    , anchor(anchor)
    , column(new QVBoxLayout(this))
{
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFixedWidth(width);
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
}

void Popover::open()
{
    resize(width(),
        column->hasHeightForWidth() ? column->totalHeightForWidth(width()) : sizeHint().height());
    const QRect within = anchor->screen()->availableGeometry();
    QPoint place = anchor->mapToGlobal(QPoint(anchor->width() - width(), anchor->height() + kGap));
    place.setX(
        std::clamp(place.x(), within.left(), std::max(within.left(), within.right() - width())));
    place.setY(
        std::clamp(place.y(), within.top(), std::max(within.top(), within.bottom() - height())));
    move(place);
    show();
}

void Popover::hideEvent(QHideEvent* event)
{
    QFrame::hideEvent(event);
    emit closed();
}

} // namespace quillbrook
