#pragma once

#include "pages/kit/Panel.h"
#include "pages/marks/TableContent.h"

#include <QString>

#include <functional>
#include <vector>

class QTableView;

namespace quillbrook {

class TableModel;

/// Rows and columns under a header that stays while the rows scroll. A cell is asked for when it is
/// seen or read, so that many thousands of rows cost no more than those on screen. In a narrow
/// place all columns become narrower alike, before they scroll. Screen readers find a table with
/// its header.
class Table final : public Panel {
    Q_OBJECT

public:
    /// Rows and columns count from 0.
    using CellAt = std::function<TableCell(int row, int column)>;

    /// `name` is what screen readers call the table.
    Table(const QString& name, std::vector<TableColumn> columns, QWidget* parent = nullptr);

    /// Replaces all rows, and goes to the first.
    void setRows(int count, CellAt cellAt);

    QTableView& view() { return *rows; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void fitColumns();

    TableModel* model;
    QTableView* rows;
};

} // namespace quillbrook
