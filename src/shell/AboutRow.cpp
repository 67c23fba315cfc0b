#include "shell/AboutRow.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"

#include <QKeyEvent>
#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kSidePadding = 16;
constexpr int kEdgePadding = 10;
constexpr int kSymbolPixels = 16;
constexpr int kSpacing = 8;

} // namespace

AboutRow::AboutRow(QWidget* parent) : QAbstractButton(parent)
{
    setText("关于");
    setAccessibleName(text());
    setCheckable(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize AboutRow::sizeHint() const
{
    return {120, kSymbolPixels + 2 * kEdgePadding};
}

void AboutRow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        event->ignore(); // the sidebar moves the selection
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

void AboutRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor accent = Look::accent(palette());
    if (isChecked()) {
        painter.fillRect(rect(), Look::faded(accent, 0.1));
    }
    const QColor color = isChecked() ? accent : Look::secondaryText(palette());
    const QRectF place(kSidePadding, kEdgePadding, kSymbolPixels, kSymbolPixels);
    Symbol::draw(painter, "info.circle", place, color);
    painter.setFont(Look::font(TextStyle::caption));
    painter.setPen(color);
    painter.drawText(rect().adjusted(kSidePadding + kSymbolPixels + kSpacing, 0, 0, 0),
        Qt::AlignLeft | Qt::AlignVCenter, text());
    drawFocusRing(painter, *this, rect(), 0);
}

} // namespace quillbrook
