#include "pages/kit/MarkList.h"

#include "pages/kit/Convert.h"
#include "pages/kit/FaceWidths.h"
#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkPainter.h"
#include "pages/kit/TextDrawing.h"

#include <QAccessible>
#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kHoverOpacity = 0.06;
constexpr double kHeldOpacity = 0.14;
constexpr double kFocusRadius = 6;

const Mark* firstSpoken(const std::vector<Mark>& marks)
{
    const auto found = std::find_if(
        marks.begin(), marks.end(), [](const Mark& mark) { return mark.role != MarkRole::none; });
    return found == marks.end() ? nullptr : &*found;
}

} // namespace

MarkList::MarkList(const QString& name, Form form, QWidget* parent)
    : QAbstractScrollArea(parent)
    , form(form)
    , textWidth(faceWidths())
{
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(form.rowHeight / 2);
    fitScrollBar();
}

void MarkList::setRows(int newCount, RowPicture newPicture)
{
    count = newCount;
    picture = std::move(newPicture);
    held.reset();
    if (current && *current >= count) {
        current.reset();
    }
    fitScrollBar();
    hoverAt(std::nullopt);
    viewport()->update();
    // The rows before can't be made any more: what they showed may be gone.
    const std::vector<SpokenText> before = std::exchange(told, spokenTexts());
    tellSpokenChanges(*this, before, told);
}

void MarkList::goToTop()
{
    current.reset();
    verticalScrollBar()->setValue(0);
    viewport()->update();
}

void MarkList::setCurrentRow(int row)
{
    current = row;
    const QRect place = rowPlace(row);
    QScrollBar& bar = *verticalScrollBar();
    if (place.top() < 0) {
        bar.setValue(bar.value() + place.top());
    } else if (place.bottom() >= viewport()->height()) {
        bar.setValue(bar.value() + place.bottom() + 1 - viewport()->height());
    }
    viewport()->update();
    tellCurrent();
}

void MarkList::press(int row)
{
    if (row >= 0 && row < count) {
        current = row;
        viewport()->update();
        emit pressed(row);
    }
}

Mark MarkList::spokenMark(int row) const
{
    const std::vector<Mark> marks = marksOf(row);
    const Mark* spoken = firstSpoken(marks);
    return spoken == nullptr ? Mark{} : *spoken;
}

QRect MarkList::rowPlace(int row) const
{
    return {0, row * form.rowHeight - verticalScrollBar()->value(), viewport()->width(),
        form.rowHeight};
}

std::optional<int> MarkList::rowAt(QPoint point) const
{
    const int y = point.y() + verticalScrollBar()->value();
    const int row = y / form.rowHeight;
    return y >= 0 && row < count ? std::optional(row) : std::nullopt;
}

std::vector<Mark> MarkList::marksOf(int row) const
{
    return picture(row,
        {static_cast<double>(viewport()->width()), static_cast<double>(form.rowHeight)}, textWidth);
}

std::vector<SpokenText> MarkList::spokenTexts() const
{
    std::vector<SpokenText> texts;
    for (int row = 0; QAccessible::isActive() && row < count; ++row) { // else nobody asks for them
        const Mark mark = spokenMark(row);
        texts.push_back({toQString(mark.name), toQString(mark.value)});
    }
    return texts;
}

void MarkList::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    const int offset = verticalScrollBar()->value();
    const int first = (event->rect().top() + offset) / form.rowHeight;
    const int last = std::min(count - 1, (event->rect().bottom() + offset) / form.rowHeight);
    for (int row = first; row <= last; ++row) {
        painter.save();
        painter.translate(rowPlace(row).topLeft());
        paintRow(painter, row);
        painter.restore();
    }
}

void MarkList::paintRow(QPainter& painter, int row) const
{
    const std::vector<Mark> marks = marksOf(row);
    for (const Mark& mark : marks) {
        paintMark(painter, mark, palette());
    }
    const Mark* whole = firstSpoken(marks);
    if (whole == nullptr) {
        return;
    }
    if (row == hovered || row == held) {
        painter.fillPath(outlineOf(whole->shape),
            Look::faded(Look::primaryText(palette()), row == held ? kHeldOpacity : kHoverOpacity));
    }
    if (row == current) {
        drawFocusRing(painter, *this, toQRectF(bounds(whole->shape)), kFocusRadius);
    }
}

void MarkList::fitScrollBar()
{
    QScrollBar& bar = *verticalScrollBar();
    const int hidden = std::max(0, count * form.rowHeight - viewport()->height());
    bar.setRange(0, hidden);
    bar.setPageStep(viewport()->height());
    const int width = hidden > 0 ? bar.sizeHint().width() : 0;
    // The bar stands in the margin, so that the rows are as far from both sides.
    setViewportMargins(form.sideMargin, 0, std::max(0, form.sideMargin - width), 0);
}

void MarkList::resizeEvent(QResizeEvent*)
{
    fitScrollBar();
}

void MarkList::scrollContentsBy(int, int)
{
    const QPoint point = viewport()->mapFromGlobal(QCursor::pos());
    hoverAt(viewport()->underMouse() ? std::optional(point) : std::nullopt);
    viewport()->update();
}

bool MarkList::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        hoverAt(std::nullopt);
    } else if (event->type() == QEvent::ToolTip) {
        const auto* asked = static_cast<QHelpEvent*>(event);
        showHelp(asked->pos(), asked->globalPos());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void MarkList::showHelp(QPoint point, QPoint globalPoint)
{
    const auto row = rowAt(point);
    const QString help = row ? toQString(spokenMark(*row).help) : QString();
    if (help.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(globalPoint, plainToolTip(help), viewport(), rowPlace(*row));
    }
}

void MarkList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        held = rowAt(event->position().toPoint());
        viewport()->update();
    }
}

void MarkList::mouseMoveEvent(QMouseEvent* event)
{
    hoverAt(event->position().toPoint());
}

void MarkList::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const auto row = std::exchange(held, std::nullopt);
    viewport()->update();
    if (row && row == rowAt(event->position().toPoint())) {
        press(*row);
    }
}

void MarkList::hoverAt(std::optional<QPoint> point)
{
    const auto row = point ? rowAt(*point) : std::nullopt;
    if (row != hovered) {
        hovered = row;
        viewport()->update();
    }
}

void MarkList::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (current && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)) {
        press(*current);
    } else if (const auto row = rowAfter(key)) {
        window()->setAttribute(Qt::WA_KeyboardFocusChange); // the current row is to be seen
        setCurrentRow(*row);
    } else {
        event->ignore();
    }
}

std::optional<int> MarkList::rowAfter(int key) const
{
    if (count == 0) {
        return std::nullopt;
    }
    const int page = std::max(1, viewport()->height() / form.rowHeight - 1);
    const auto stepped
        = [this](int step) { return current ? std::clamp(*current + step, 0, count - 1) : 0; };
    switch (key) {
    case Qt::Key_Down:
        return stepped(1);
    case Qt::Key_Up:
        return stepped(-1);
    case Qt::Key_PageDown:
        return stepped(page);
    case Qt::Key_PageUp:
        return stepped(-page);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return count - 1;
    default:
        return std::nullopt;
    }
}

void MarkList::focusInEvent(QFocusEvent* event)
{
    const bool isByKeys
        = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (!current && isByKeys && count > 0) {
        // The first row that is whole, so that nothing moves.
        const int offset = verticalScrollBar()->value();
        setCurrentRow(std::min(count - 1, (offset + form.rowHeight - 1) / form.rowHeight));
    } else {
        tellCurrent();
    }
    viewport()->update();
}

void MarkList::focusOutEvent(QFocusEvent*)
{
    viewport()->update();
}

void MarkList::tellCurrent()
{
    if (current && hasFocus()) {
        QAccessibleEvent focus(this, QAccessible::Focus);
        focus.setChild(*current);
        QAccessible::updateAccessibility(&focus);
    }
}

} // namespace quillbrook
