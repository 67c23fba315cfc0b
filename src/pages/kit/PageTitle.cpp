#include "pages/kit/PageTitle.h"

#include "pages/kit/Look.h"

#include <QLinearGradient>
#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kTitlePixels = 32;
constexpr double kMinimumScale = 0.6;

} // namespace

PageTitle::PageTitle(const QString& title, Design design, QWidget* parent) : QWidget(parent)
{
    setAccessibleName(title);
    setFont(design == Design::serif ? Look::serifFont(kTitlePixels, QFont::Black)
                                    : Look::systemFont(kTitlePixels, QFont::Black));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

QSize PageTitle::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(accessibleName()) + 2, metrics.height()};
}

QSize PageTitle::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return {static_cast<int>(whole.width() * kMinimumScale), whole.height()};
}

void PageTitle::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QFont fitting = font();
    if (const double wanted = sizeHint().width(); wanted > width()) {
        fitting.setPixelSize(static_cast<int>(fitting.pixelSize() * width() / wanted));
    }
    painter.setFont(fitting);
    const QColor edge = Look::color(SystemColor::orange, palette());
    QLinearGradient gradient(0, 0, width(), 0);
    gradient.setColorAt(0, edge);
    gradient.setColorAt(0.5, Look::color(SystemColor::yellow, palette()));
    gradient.setColorAt(1, edge);
    painter.setPen(QPen(QBrush(gradient), 1));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, accessibleName());
}

} // namespace quillbrook
