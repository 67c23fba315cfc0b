#include "lab/AccessibleText.h"

#include "lab/JsonText.h"

#include <QAccessible>
#include <QWidget>

namespace quillbrook::lab {

namespace {

/// The word for a role; empty for what only holds others.
QString roleName(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Window:
    case QAccessible::Dialog:
        return "window";
    case QAccessible::StaticText:
    case QAccessible::EditableText:
        return "text";
    case QAccessible::Button:
        return "button";
    case QAccessible::PageTab:
        return "segment";
    case QAccessible::PageTabList:
    case QAccessible::ComboBox:
        return "picker";
    case QAccessible::Graphic:
        return "image";
    case QAccessible::ListItem:
        return "row";
    case QAccessible::Indicator:
        return "mark";
    case QAccessible::Cell:
        return "cell";
    default:
        return {};
    }
}

/// An element as it is listed.
struct Listed {
    QString role{};
    QString name{};
    QString value{};
    QRect rect{}; // on the screen
};

QByteArray line(const Listed& listed, QPoint origin)
{
    const QRect rect = listed.rect.translated(-origin);
    return "{\"role\": " + jsonText(listed.role.toStdString())
        + ", \"name\": " + jsonText(listed.name.toStdString())
        + ", \"value\": " + jsonText(listed.value.toStdString()) + ", \"rect\": ["
        + QByteArray::number(rect.x()) + ", " + QByteArray::number(rect.y()) + ", "
        + QByteArray::number(rect.width()) + ", " + QByteArray::number(rect.height()) + "]}\n";
}

Listed listedText(const QAccessibleInterface& element)
{
    return {"text", element.text(QAccessible::Name), {}, element.rect()};
}

Listed wholeRow(const QString& name, const QList<Listed>& cells)
{
    Listed row{"row", name, {}, {}};
    QStringList others;
    for (const Listed& cell : cells) {
        row.rect |= cell.rect;
        others.append(cell.name);
    }
    others.removeOne(name);
    row.value = others.join(", ");
    return row;
}

/// The titles of the columns, then each row: as a whole, its value the cells that don't name it,
/// and cell by cell.
void appendTable(QByteArray& lines, QAccessibleTableInterface& table, QPoint origin)
{
    for (int row = 0; row < table.rowCount(); ++row) {
        QList<Listed> cells;
        QList<Listed> titles;
        for (int column = 0; column < table.columnCount(); ++column) {
            QAccessibleInterface* cell = table.cellAt(row, column);
            cells.append(listedText(*cell));
            for (const auto* title : cell->tableCellInterface()->columnHeaderCells()) {
                titles.append(listedText(*title));
            }
        }
        for (const Listed& title : row == 0 ? titles : QList<Listed>()) {
            lines += line(title, origin);
        }
        lines += line(wholeRow(table.rowDescription(row), cells), origin);
        for (const Listed& cell : cells) {
            lines += line(cell, origin);
        }
    }
}

// A tree, as deep as widgets are nested.
// NOLINTNEXTLINE(misc-no-recursion)
void append(QByteArray& lines, QAccessibleInterface& element, QPoint origin)
{
    if (element.state().invisible || element.role() == QAccessible::ScrollBar) {
        return;
    }
    if (QAccessibleTableInterface* table = element.tableInterface();
        table != nullptr && element.role() == QAccessible::Table) {
        appendTable(lines, *table, origin);
        return;
    }
    const Listed listed{roleName(element.role()), element.text(QAccessible::Name),
        element.text(QAccessible::Value), element.rect()};
    if (!listed.role.isEmpty() && !(listed.name.isEmpty() && listed.value.isEmpty())) {
        lines += line(listed, origin);
    }
    for (int i = 0; i < element.childCount(); ++i) {
        if (QAccessibleInterface* child = element.child(i)) {
            append(lines, *child, origin);
        }
    }
}

} // namespace

QByteArray accessibleText(QWidget& window)
{
    return accessibleText(window, window);
}

QByteArray accessibleText(QWidget& window, const QWidget& base)
{
    QByteArray lines;
    if (auto* root = QAccessible::queryAccessibleInterface(&window)) {
        append(lines, *root, base.mapToGlobal(QPoint(0, 0)));
    }
    return lines;
}

} // namespace quillbrook::lab
