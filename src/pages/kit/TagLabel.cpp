#include "pages/kit/TagLabel.h"

#include "pages/kit/Look.h"
#include "pages/kit/RoundedFill.h"
#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace quillbrook {

TagLabel::TagLabel(const QString& text, const QFont& font, const TagForm& form, QWidget* parent)
    : QWidget(parent)
    , form(form)
{
    setAccessibleName(text);
    setFont(font);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TagLabel::sizeHint() const
{
    const QFontMetricsF metrics(font());
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(accessibleName())))
            + 2 * form.sidePadding,
        static_cast<int>(std::ceil(metrics.height())) + 2 * form.edgePadding};
}

void TagLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    fillRounded(painter, rect(), form.radius, Look::color(form.ground, palette()));
    drawShrunkText(painter, rect().adjusted(form.sidePadding, 0, -form.sidePadding, 0),
        Qt::AlignHCenter, accessibleName(), font(), Look::primaryText(palette()));
}

} // namespace quillbrook
