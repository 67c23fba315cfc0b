#include "pages/kit/TableModel.h"

#include <algorithm>
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
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Horizontal) {
        return QString::fromStdString(column(section).title);
    }
    const auto naming = std::ranges::find_if(columns, &TableColumn::namesTheRow);
    return naming == columns.end()
        ? QVariant()
        : QString::fromStdString(cellAt(section, static_cast<int>(naming - columns.begin())).text);
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

} // namespace quillbrook
