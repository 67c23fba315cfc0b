#include "pages/views/RecordTable.h"

#include "pages/kit/EmptyState.h"

#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kNothingHeight = 200;
constexpr EmptyForm kNothingForm{.symbolPixels = 48,
    .symbolTint = secondaryTint(0.6),
    .lineStyle = TextStyle::headline,
    .lineTint = secondaryTint()};

} // namespace

RecordTable::RecordTable(const QString& name, std::vector<TableColumn> columns,
    const QString& symbol, const QString& line, QWidget* parent)
    : QWidget(parent)
    , table(new Table(name, std::move(columns)))
    , nothing(new EmptyState(symbol, line, {}, kNothingForm))
{
    nothing->setMinimumHeight(kNothingHeight);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(table);
    column->addWidget(nothing);
    setRows(0, {});
}

void RecordTable::setRows(std::size_t count, Table::CellAt cellAt)
{
    table->setRows(static_cast<int>(count), std::move(cellAt));
    table->setVisible(count > 0);
    nothing->setVisible(count == 0);
}

} // namespace quillbrook
