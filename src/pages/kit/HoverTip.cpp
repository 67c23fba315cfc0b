#include "pages/kit/HoverTip.h"

#include "pages/kit/Look.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillbrook {

namespace {

constexpr int kPixels = 11;
constexpr int kSidePadding = 10;
constexpr int kEdgePadding = 5;
constexpr int kSpacing = 4;
constexpr int kDot = 8;
constexpr int kShadow = 3; // room for the shadow on all sides
constexpr int kLongestName = 260;
constexpr int kMotionMs = 120;
constexpr double kRadius = 6;

double textWidth(const QFont& font, const QString& text)
{
    return QFontMetricsF(font).horizontalAdvance(text);
}

} // namespace

HoverTip::HoverTip(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    motion.setDuration(kMotionMs);
    motion.setEasingCurve(QEasingCurve::InOutQuad);
    appearance.setDuration(kMotionMs);
    appearance.setEasingCurve(QEasingCurve::InOutQuad);
    appearance.setStartValue(0.0);
    appearance.setEndValue(1.0);
    connect(&appearance, &QVariantAnimation::valueChanged, this, [this] { update(); });
    hide();
}

void HoverTip::setContent(const QColor& newDot, const QString& newName, const QString& newNote)
{
    const QFontMetricsF metrics(Look::systemFont(kPixels, QFont::Medium));
    dot = newDot;
    name = metrics.elidedText(newName, Qt::ElideMiddle, kLongestName);
    note = newNote;
    resize(sizeHint());
    update();
}

void HoverTip::showAt(QPointF point)
{
    const QPoint place = placeAt(point);
    motion.stop();
    if (!isVisible()) {
        move(place);
        show();
        raise();
        appearance.stop();
        appearance.start();
        return;
    }
    motion.setStartValue(pos());
    motion.setEndValue(place);
    motion.start();
}

QPoint HoverTip::placeAt(QPointF center) const
{
    const QPoint place = (center - QPointF(width() / 2.0, height() / 2.0)).toPoint();
    const int rightmost = parentWidget()->width() - width();
    return {std::max(0, std::min(place.x(), rightmost)), place.y()};
}

QSize HoverTip::sizeHint() const
{
    const double width = 2 * (kShadow + kSidePadding) + kDot + 3 * kSpacing
        + textWidth(Look::systemFont(kPixels, QFont::Medium), name)
        + textWidth(Look::systemFont(kPixels), "·") + textWidth(Look::systemFont(kPixels), note);
    const int line = kPixels * 5 / 4;
    return {static_cast<int>(std::ceil(width)), 2 * (kShadow + kEdgePadding) + line};
}

void HoverTip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(appearance.currentValue().toDouble());
    painter.setPen(Qt::NoPen);
    for (int ring = kShadow; ring > 0; --ring) {
        painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.15F / static_cast<float>(ring + 1)));
        painter.drawRoundedRect(QRectF(rect()).adjusted(kShadow - ring, kShadow - ring + 1,
                                    ring - kShadow, ring - kShadow),
            kRadius + ring, kRadius + ring);
    }
    painter.setBrush(Look::faded(Look::controlBackground(palette()), 0.95));
    const QRectF body = QRectF(rect()).adjusted(kShadow, kShadow, -kShadow, -kShadow);
    painter.drawRoundedRect(body, kRadius, kRadius);

    painter.setBrush(dot);
    double x = body.left() + kSidePadding;
    painter.drawEllipse(QRectF(x, body.center().y() - kDot / 2.0, kDot, kDot));
    x += kDot + kSpacing;
    const auto write = [&](const QString& text, const QFont& font, const QColor& color) {
        painter.setFont(font);
        painter.setPen(color);
        painter.drawText(
            QRectF(x, body.top(), width(), body.height()), Qt::AlignLeft | Qt::AlignVCenter, text);
        x += textWidth(font, text) + kSpacing;
    };
    write(name, Look::systemFont(kPixels, QFont::Medium), Look::primaryText(palette()));
    write("·", Look::systemFont(kPixels), Look::secondaryText(palette()));
    write(note, Look::systemFont(kPixels), Look::secondaryText(palette()));
}

} // namespace quillbrook
