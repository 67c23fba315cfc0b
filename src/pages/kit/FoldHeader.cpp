#include "pages/kit/FoldHeader.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"

#include <QPainter>

namespace quillbrook {

namespace {

constexpr int kSidePadding = 24;
constexpr int kDivider = 1;
constexpr int kAbove = 10; // and below
constexpr int kSpacing = 8;
constexpr int kDot = 8;
constexpr int kLine = 16; // the height of the texts
constexpr int kChevronPixels = 10;
constexpr double kGroundOpacity = 0.5;
constexpr double kRadius = 4;

} // namespace

FoldHeader::FoldHeader(const QString& title, QWidget* parent) : QAbstractButton(parent)
{
    setText(title);
    setAccessibleName(title);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FoldHeader::setNote(const QString& newNote)
{
    if (newNote != note) {
        note = newNote;
        setAccessibleDescription(note); // Linux hands on no text as an element's value
        update();
    }
}

void FoldHeader::setDivided(bool newDivided)
{
    isDivided = newDivided;
    updateGeometry();
    update();
}

QSize FoldHeader::sizeHint() const
{
    return {2 * kSidePadding, kLine + 2 * kAbove + (isDivided ? kDivider : 0)};
}

void FoldHeader::checkStateSet()
{
    tellFolding();
}

void FoldHeader::nextCheckState()
{
    QAbstractButton::nextCheckState();
    tellFolding();
}

void FoldHeader::tellFolding()
{
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void FoldHeader::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect part = rect().adjusted(0, isDivided ? kDivider : 0, 0, 0);
    if (isDivided) {
        painter.fillRect(QRect(kSidePadding, 0, width() - 2 * kSidePadding, kDivider),
            Look::separator(palette()));
    }
    painter.fillRect(part, Look::faded(Look::controlBackground(palette()), kGroundOpacity));
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor secondary = Look::secondaryText(palette());
    QRectF line = QRectF(part).adjusted(kSidePadding, kAbove, -kSidePadding, -kAbove);

    const QRectF chevron(line.right() - kChevronPixels, line.center().y() - kChevronPixels / 2.0,
        kChevronPixels, kChevronPixels);
    Symbol::draw(painter, isChecked() ? "chevron.down" : "chevron.right", chevron, secondary);
    line.setRight(chevron.left() - kSpacing);

    painter.setPen(Qt::NoPen);
    painter.setBrush(secondary);
    painter.drawEllipse(QRectF(line.left(), line.center().y() - kDot / 2.0, kDot, kDot));
    line.setLeft(line.left() + kDot + kSpacing);

    const QFont headline = Look::font(TextStyle::headline);
    drawShrunkText(painter, line, Qt::AlignLeft, text(), headline, Look::primaryText(palette()));
    line.setLeft(line.left() + QFontMetricsF(headline).horizontalAdvance(text()) + kSpacing);
    drawShrunkText(painter, line, Qt::AlignLeft, note, Look::font(TextStyle::caption), secondary);
    drawFocusRing(painter, *this, part, kRadius);
}

} // namespace quillbrook
