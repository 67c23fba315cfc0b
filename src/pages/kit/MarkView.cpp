#include "pages/kit/MarkView.h"

#include "pages/kit/Convert.h"
#include "pages/kit/FaceWidths.h"
#include "pages/kit/FocusRing.h"
#include "pages/kit/MarkPainter.h"
#include "pages/kit/TextDrawing.h"

#include <QAccessible>
#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kFocusRadius = 4;

/// Whether the arrow keys stop at a mark.
bool isWalked(const Mark& mark)
{
    return mark.role == MarkRole::mark || mark.role == MarkRole::cell;
}

bool isHit(const Mark& mark, QPointF point)
{
    if (!contains(bounds(mark.shape), {point.x(), point.y()})) {
        return false;
    }
    return std::holds_alternative<Box>(mark.shape) || outlineOf(mark.shape).contains(point);
}

} // namespace

MarkView::MarkView(const QString& name, QWidget* parent) : QWidget(parent), textWidth(faceWidths())
{
    setAccessibleName(name);
    setMouseTracking(true);
}

void MarkView::setPicture(Picture newPicture)
{
    picture = std::move(newPicture);
    remakeMarks();
}

void MarkView::setPictureHeight(int height, int minimumWidth)
{
    wanted = QSize(minimumWidth, height);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    updateGeometry();
}

void MarkView::setCornerRadius(double radius)
{
    cornerRadius = radius;
    update();
}

const std::vector<Mark>& MarkView::marks() const
{
    if (!kept || keptScale != devicePixelRatioF()) {
        keptScale = devicePixelRatioF();
        const Size size{static_cast<double>(width()), static_cast<double>(height())};
        kept = picture ? picture(size, textWidth) : std::vector<Mark>();
        spoken.clear();
        for (std::size_t place = 0; place < kept->size(); ++place) {
            if ((*kept)[place].role != MarkRole::none) {
                spoken.push_back(place);
            }
        }
    }
    return *kept;
}

const std::vector<std::size_t>& MarkView::spokenMarks() const
{
    marks();
    return spoken;
}

void MarkView::remakeMarks()
{
    const std::vector<SpokenText> before = spokenTexts();
    kept.reset();
    update();
    followNewMarks();
    tellSpokenChanges(*this, before, spokenTexts());
}

std::vector<SpokenText> MarkView::spokenTexts() const
{
    std::vector<SpokenText> texts;
    if (kept && QAccessible::isActive()) { // else nobody asks for them
        for (const std::size_t place : spoken) {
            const Mark& mark = (*kept)[place];
            texts.push_back({toQString(mark.name), toQString(mark.value)});
        }
    }
    return texts;
}

void MarkView::followNewMarks()
{
    if (!isVisible()) {
        // Its size isn't known yet, so that marks made now would be made in vain.
        setFocusPolicy(Qt::StrongFocus);
        current.reset();
        return;
    }
    const auto& all = marks();
    setFocusPolicy(std::any_of(all.begin(), all.end(), isWalked) ? Qt::StrongFocus : Qt::NoFocus);
    if (!current) {
        return;
    }
    const auto same = std::find_if(all.begin(), all.end(),
        [this](const Mark& mark) { return isWalked(mark) && mark.name == currentName; });
    current.reset();
    if (same != all.end()) {
        current = static_cast<std::size_t>(same - all.begin());
    }
    emit currentMarkChanged();
}

void MarkView::setCurrent(std::optional<std::size_t> mark)
{
    if (mark == current) {
        return;
    }
    current = mark;
    currentName = mark ? marks()[*mark].name : std::string();
    update();
    emit currentMarkChanged();
}

std::optional<std::size_t> MarkView::markAt(QPointF point) const
{
    const auto& all = marks();
    // The last one drawn lies on top.
    const auto hit = std::find_if(all.rbegin(), all.rend(), [point](const Mark& mark) {
        return (isWalked(mark) || !mark.help.empty()) && isHit(mark, point);
    });
    return hit == all.rend() ? std::nullopt
                             : std::optional(static_cast<std::size_t>(all.rend() - hit) - 1);
}

void MarkView::hoverAt(QPointF point)
{
    isReachedByKeys = false;
    setCurrent(markAt(point));
}

void MarkView::hoverAgain()
{
    const QPoint point = mapFromGlobal(QCursor::pos());
    if (isVisible() && visibleRegion().contains(point)) {
        hoverAt(point);
    } else {
        setCurrent(std::nullopt);
    }
}

QString MarkView::helpOf(const Mark& mark) const
{
    if (!mark.help.empty() || isWalked(mark)) {
        return toQString(mark.help);
    }
    const bool isAnyCut
        = std::any_of(mark.texts.begin(), mark.texts.end(), [this](const TextLine& line) {
              return textWidth(line.text, line.face) * line.minimumScale > line.place.width + 0.5;
          });
    return isAnyCut ? toQString(mark.name) : QString();
}

bool MarkView::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    const auto* asked = static_cast<QHelpEvent*>(event);
    const auto& all = marks();
    const auto told = std::find_if(all.rbegin(), all.rend(),
        [&](const Mark& mark) { return isHit(mark, asked->pos()) && !helpOf(mark).isEmpty(); });
    if (told == all.rend()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        QToolTip::showText(asked->globalPos(), plainToolTip(helpOf(*told)), this);
    }
    return true;
}

void MarkView::paintEvent(QPaintEvent* event)
{
    const QRectF dirty = event->region().boundingRect();
    QPainter painter(this);
    if (cornerRadius > 0) {
        QPainterPath corners;
        corners.addRoundedRect(rect(), cornerRadius, cornerRadius);
        painter.setClipPath(corners);
    }
    // Next to something that moves a small part is painted often.
    for (const Mark& mark : marks()) {
        if (toQRectF(reach(mark)).intersects(dirty)) {
            paintMark(painter, mark, palette());
        }
    }
    const bool isMarkReached = current && isReachedByKeys;
    drawFocusRing(painter, *this,
        isMarkReached ? toQRectF(bounds(marks()[*current].shape)).adjusted(-2, -2, 2, 2)
                      : QRectF(rect()),
        isMarkReached ? kFocusRadius : std::max(cornerRadius, kFocusRadius));
}

void MarkView::enterEvent(QEnterEvent* event)
{
    hoverAt(event->position());
}

void MarkView::mouseMoveEvent(QMouseEvent* event)
{
    hoverAt(event->position());
}

void MarkView::leaveEvent(QEvent*)
{
    setCurrent(std::nullopt);
}

void MarkView::focusOutEvent(QFocusEvent* event)
{
    // A menu takes the focus while it is open, and speaks of the current mark.
    if (event->reason() != Qt::PopupFocusReason) {
        setCurrent(std::nullopt);
    }
    QWidget::focusOutEvent(event);
}

void MarkView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && current) {
        setCurrent(std::nullopt);
        return;
    }
    if (!walk(event->key())) {
        QWidget::keyPressEvent(event);
    }
}

bool MarkView::walk(int key)
{
    std::vector<std::size_t> stops;
    for (std::size_t place = 0; place < marks().size(); ++place) {
        if (isWalked(marks()[place])) {
            stops.push_back(place);
        }
    }
    const bool isForward = key == Qt::Key_Right || key == Qt::Key_Down;
    const bool isBackward = key == Qt::Key_Left || key == Qt::Key_Up;
    const bool isStep = isForward || isBackward;
    if (stops.empty() || (!isStep && key != Qt::Key_Home && key != Qt::Key_End)) {
        return false;
    }
    std::size_t next = key == Qt::Key_End || isBackward ? stops.size() - 1 : 0;
    if (const auto here = current ? std::find(stops.begin(), stops.end(), *current) : stops.end();
        here != stops.end() && isStep) {
        const auto place = static_cast<std::size_t>(here - stops.begin());
        next = (place + (isForward ? 1 : stops.size() - 1)) % stops.size();
    }
    isReachedByKeys = true;
    setCurrent(stops[next]);
    tellCurrent();
    return true;
}

void MarkView::tellCurrent()
{
    const Mark& mark = marks()[*current];
    const QRect place = toQRectF(bounds(mark.shape)).toAlignedRect();
    for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(above)) {
            const QPoint middle = mapTo(area->widget(), place.center());
            area->ensureVisible(middle.x(), middle.y());
        }
    }
    if (!mark.help.empty()) {
        QToolTip::showText(mapToGlobal(place.bottomLeft()), plainToolTip(helpOf(mark)), this);
    }
    const auto child = std::find(spokenMarks().begin(), spokenMarks().end(), *current);
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(static_cast<int>(child - spokenMarks().begin()));
    QAccessible::updateAccessibility(&focus);
}

void MarkView::resizeEvent(QResizeEvent*)
{
    remakeMarks();
}

void MarkView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    followNewMarks();
    // A page that scrolls under a pointer at rest moves other marks under it.
    for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(above)) {
            connect(area->verticalScrollBar(), &QScrollBar::valueChanged, this,
                &MarkView::followScrolling, Qt::UniqueConnection);
        }
    }
}

void MarkView::followScrolling()
{
    if (!isReachedByKeys && (current || underMouse())) {
        hoverAgain();
    }
}

} // namespace quillbrook
