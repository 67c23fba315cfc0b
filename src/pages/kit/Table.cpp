#include "pages/kit/Table.h"

#include "pages/kit/TableModel.h"
#include "pages/kit/TablePainting.h"

#include <QEvent>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kFewestRows = 3; // that a table shows, however little room there is
constexpr double kLeastShare = 0.75; // of its width, that a column keeps in a narrow place
constexpr int kRowHeight = TableSizes::kLine + 2 * TableSizes::kRowPadding;

void setForm(QTableView& view)
{
    view.setFrameShape(QFrame::NoFrame);
    view.setShowGrid(false);
    view.setSelectionMode(QAbstractItemView::NoSelection);
    view.setTabKeyNavigation(false); // one stop; the arrow keys walk through the cells
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.verticalHeader()->hide();
    view.verticalHeader()->setMinimumSectionSize(0);
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(kRowHeight);
    view.viewport()->setAutoFillBackground(false);
    view.setMinimumHeight((kFewestRows + 1) * kRowHeight);
}

} // namespace

Table::Table(const QString& name, std::vector<TableColumn> columns, QWidget* parent)
    : Panel({.padding = 0, .radius = TableSizes::kRadius}, parent)
    , model(new TableModel(std::move(columns), this))
    , rows(new QTableView)
{
    rows->setAccessibleName(name);
    rows->setHorizontalHeader(new TableHeader(*model, rows));
    rows->setItemDelegate(new TableDelegate(*model, rows));
    rows->setModel(model);
    setForm(*rows);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(rows);
    fitColumns();
    rows->viewport()->installEventFilter(this);
}

void Table::setRows(int count, CellAt cellAt)
{
    model->setRows(count, std::move(cellAt));
    rows->scrollToTop();
}

void Table::fitColumns()
{
    const int count = model->columnCount();
    int wanted = 0;
    int room = rows->viewport()->width();
    for (int column = 0; column < count; ++column) {
        wanted += model->column(column).width;
        room -= TableSizes::padding(*model, column);
    }
    const double share = std::clamp(room / static_cast<double>(wanted), kLeastShare, 1.0);
    for (int column = 0; column < count; ++column) {
        const int width = static_cast<int>(model->column(column).width * share);
        const int rest = model->column(column).takesTheRest ? std::max(0, room - wanted) : 0;
        rows->setColumnWidth(column, width + TableSizes::padding(*model, column) + rest);
    }
}

bool Table::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Resize) { // of the viewport, which a scroll bar narrows, too
        fitColumns();
    }
    return Panel::eventFilter(object, event);
}

} // namespace quillbrook
