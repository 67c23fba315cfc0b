#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace quillbrook {

class TableModel;

/// The measures that header and rows share.
namespace TableSizes {

constexpr int kRowPadding = 10; // above and below a row's text
constexpr int kHeaderPadding = 8;
constexpr int kSidePadding = 16; // at both ends of a row
constexpr int kGap = 8; // between two columns
constexpr int kLine = 16; // the height of a row's text
constexpr int kHeaderLine = 13;
constexpr int kRadius = 8; // of the table's corners

/// What a column has beside its width: its part of the gaps.
int padding(const TableModel& model, int column);

/// The place of a column's text within its section.
QRect textPlace(const QRect& section, const TableModel& model, int column);

} // namespace TableSizes

/// The titles of a table's columns.
class TableHeader final : public QHeaderView {
    Q_OBJECT

public:
    TableHeader(const TableModel& model, QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const TableModel& columns;
};

/// Draws a table's cells. A text that is cut stands whole in the tooltip.
class TableDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    TableDelegate(const TableModel& model, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

private:
    const TableModel& model;
};

} // namespace quillbrook
