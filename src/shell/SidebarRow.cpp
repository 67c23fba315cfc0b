#include "shell/SidebarRow.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"

#include <QKeyEvent>
#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kHeight = 28;
constexpr int kSidePadding = 8;
constexpr int kSymbolPixels = 16;
constexpr int kBehindSymbol = 8;
constexpr double kRadius = 6;

} // namespace

SidebarRow::SidebarRow(const QString& symbol, const QString& title, QWidget* parent)
    : QAbstractButton(parent)
    , symbol(symbol)
{
    setText(title);
    setAccessibleName(title);
    setCheckable(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize SidebarRow::sizeHint() const
{
    return {120, kHeight};
}

void SidebarRow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        event->ignore(); // the sidebar moves the selection
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

void SidebarRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Look::accent(palette()));
        painter.drawRoundedRect(rect(), kRadius, kRadius);
    }
    const QColor accent = Look::accent(palette());
    const QColor onAccent = Look::textOnAccent(palette());
    const QRectF place(
        kSidePadding, (height() - kSymbolPixels) / 2.0, kSymbolPixels, kSymbolPixels);
    Symbol::draw(painter, symbol, place, isChecked() ? onAccent : accent);
    painter.setFont(Look::font(TextStyle::body));
    painter.setPen(isChecked() ? onAccent : Look::primaryText(palette()));
    painter.drawText(rect().adjusted(kSidePadding + kSymbolPixels + kBehindSymbol, 0, 0, 0),
        Qt::AlignLeft | Qt::AlignVCenter, text());
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
