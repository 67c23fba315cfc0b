#include "pages/kit/Panel.h"

#include "pages/kit/Look.h"

#include <QPainter>

namespace quillbrook {

namespace {

constexpr double kRadius = 12;

} // namespace

Panel::Panel(QWidget* parent) : QWidget(parent)
{
    setContentsMargins(kPadding, kPadding, kPadding, kPadding);
}

void Panel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Look::controlBackground(palette()));
    painter.drawRoundedRect(rect(), kRadius, kRadius);
}

} // namespace quillbrook
