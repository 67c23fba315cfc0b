#pragma once

#include "pages/kit/Table.h"

#include <QWidget>

#include <vector>

namespace quillbrook {

class EmptyState;

/// A table that fills its place, or what stands there without rows.
class RecordTable final : public QWidget {
    Q_OBJECT

public:
    /// `symbol` and `line` are those of the empty state; `name` is for screen readers.
    RecordTable(const QString& name, std::vector<TableColumn> columns, const QString& symbol,
        const QString& line, QWidget* parent = nullptr);

    void setRows(std::size_t count, Table::CellAt cellAt);

private:
    Table* table;
    EmptyState* nothing;
};

} // namespace quillbrook
