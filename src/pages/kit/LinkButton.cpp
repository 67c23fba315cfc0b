#include "pages/kit/LinkButton.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace quillbrook {

namespace {

constexpr int kSidePadding = 2; // for the ring of the focus; hardly to be seen without it
constexpr int kEdgePadding = 3; // above and below
constexpr double kRadius = 4;

} // namespace

LinkButton::LinkButton(const QString& text, const QFont& font, QWidget* parent)
    : QAbstractButton(parent)
{
    setText(text);
    setShortcut({}); // an ampersand is no mnemonic
    setAccessibleName(text);
    setFont(font);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    const QFontMetricsF metrics(font());
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(text()))) + 2 * kSidePadding,
        static_cast<int>(std::ceil(metrics.height())) + 2 * kEdgePadding};
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QFont shown = font();
    shown.setUnderline(underMouse() || isDown());
    const QColor color = Look::faded(Look::link(palette()), isDown() ? 0.6 : 1);
    drawShrunkText(painter, rect().adjusted(kSidePadding, 0, -kSidePadding, 0), Qt::AlignLeft,
        text(), shown, color);
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
