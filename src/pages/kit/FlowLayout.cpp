#include "pages/kit/FlowLayout.h"

#include <QWidget>

#include <algorithm>
#include <memory>

namespace quillbrook {

FlowLayout::FlowLayout(int spacing, QWidget* parent)
    : FlowLayout(spacing, Rows::fromTheLeft, parent)
{
}

FlowLayout::FlowLayout(int spacing, Rows rows, QWidget* parent) : QLayout(parent), rows(rows)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout()
{
    qDeleteAll(items);
}

void FlowLayout::clear()
{
    while (!items.isEmpty()) {
        const std::unique_ptr<QLayoutItem> item(items.takeFirst());
        item->widget()->setParent(nullptr); // hides it too
        item->widget()->deleteLater(); // it may be the one whose signal leads here
    }
    invalidate();
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    return index >= 0 && index < items.size() ? items.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const
{
    int height = 0;
    for (const QRect& place : placesFor(width)) {
        height = std::max(height, place.bottom() + 1);
    }
    return height;
}

QSize FlowLayout::sizeHint() const
{
    int width = 0;
    for (const QLayoutItem* item : items) {
        width += item->sizeHint().width() + spacing();
    }
    return {width, minimumSize().height()};
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : items) {
        size = size.expandedTo(item->sizeHint());
    }
    return size;
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QList<QRect> places = placesFor(rect.width());
    for (int i = 0; i < items.size(); ++i) {
        items[i]->setGeometry(places[i].translated(rect.topLeft()));
    }
}

QList<QRect> FlowLayout::placesFor(int width) const
{
    QList<QRect> places;
    qsizetype first = 0; // of the present row
    QPoint next;
    int rowHeight = 0;
    const auto endRow = [&] {
        const int rest = std::max(width - (next.x() - spacing()), 0);
        for (qsizetype i = first; i < places.size(); ++i) {
            places[i].translate(
                rows == Rows::centered ? rest / 2 : 0, (rowHeight - places[i].height()) / 2);
        }
        first = places.size();
    };
    for (const QLayoutItem* item : items) {
        const QSize size = item->sizeHint();
        if (next.x() > 0 && next.x() + size.width() > width) {
            endRow();
            next = {0, next.y() + rowHeight + spacing()};
            rowHeight = 0;
        }
        places.append({next, size});
        next.rx() += size.width() + spacing();
        rowHeight = std::max(rowHeight, size.height());
    }
    endRow();
    return places;
}

} // namespace quillbrook
