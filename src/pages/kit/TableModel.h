#pragma once

#include "pages/kit/Table.h"

#include <QAbstractTableModel>

namespace quillbrook {

/// A table's rows, as Qt's views ask for them.
class TableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    TableModel(std::vector<TableColumn> columns, QObject* parent);

    void setRows(int newCount, Table::CellAt newCellAt);

    const TableColumn& column(int place) const;
    TableCell cell(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<TableColumn> columns;
    int count = 0;
    Table::CellAt cellAt{};
};

} // namespace quillbrook
