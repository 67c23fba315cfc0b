#include "pages/kit/PageTitle.h"

#include "pages/kit/Look.h"

#include <QLinearGradient>
#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kTitlePixels = 32;

} // namespace

PageTitle::PageTitle(const QString& title, Design design, QWidget* parent) : QWidget(parent)
{
    setAccessibleName(title);
    setFont(design == Design::serif ? Look::serifFont(kTitlePixels, QFont::Black)
                                    : Look::systemFont(kTitlePixels, QFont::Black));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PageTitle::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(accessibleName()) + 2, metrics.height()};
}

void PageTitle::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor edge = Look::color(SystemColor::orange, palette());
    QLinearGradient gradient(0, 0, width(), 0);
    gradient.setColorAt(0, edge);
    gradient.setColorAt(0.5, Look::color(SystemColor::yellow, palette()));
    gradient.setColorAt(1, edge);
    painter.setPen(QPen(QBrush(gradient), 1));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, accessibleName());
}

} // namespace quillbrook
