#include "pages/kit/Line.h"

#include "pages/kit/Look.h"

#include <QPainter>

namespace quillbrook {

Line::Line(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(1);
}

void Line::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(contentsRect(), Look::separator(palette()));
}

} // namespace quillbrook
