#include "pages/kit/TableModel.h"

#include <utility>

namespace quillbrook {

TableModel::TableModel(std::vector<TableColumn> columns, QObject* parent)
    : QAbstractTableModel(parent)
    , columns(std::move(columns))
{
}

void TableModel::setRows(int newCount, Table::CellAt newCellAt)
{
    beginResetModel();
    count = newCount;
    cellAt = std::move(newCellAt);
    endResetModel();
}

const TableColumn& TableModel::column(int place) const
{
    return columns[static_cast<std::size_t>(place)];
}

TableCell TableModel::cell(const QModelIndex& index) const
{
    return cellAt(index.row(), index.column());
}

int TableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count;
}

int TableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() && role == Qt::DisplayRole
        ? QVariant(QString::fromStdString(cell(index).text))
        : QVariant();
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole
        ? QVariant(QString::fromStdString(column(section).title))
        : QVariant();
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

} // namespace quillbrook
