#include "pages/kit/FocusRing.h"

#include "pages/kit/Look.h"

#include <QPainter>
#include <QWidget>

namespace quillbrook {

void drawFocusRing(QPainter& painter, const QWidget& widget, const QRectF& rect, double radius)
{
    if (!widget.hasFocus() || !widget.window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Look::faded(Look::accent(widget.palette()), 0.7), 2));
    painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), radius, radius);
    painter.restore();
}

} // namespace quillbrook
