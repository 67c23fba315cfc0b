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

QByteArray line(const QString& role, const QAccessibleInterface& element, QPoint origin)
{
    const QRect rect = element.rect().translated(-origin);
    return "{\"role\": " + jsonText(role.toStdString())
        + ", \"name\": " + jsonText(element.text(QAccessible::Name).toStdString()) + ", \"value\": "
        + jsonText(element.text(QAccessible::Value).toStdString()) + ", \"rect\": ["
        + QByteArray::number(rect.x()) + ", " + QByteArray::number(rect.y()) + ", "
        + QByteArray::number(rect.width()) + ", " + QByteArray::number(rect.height()) + "]}\n";
}

// A tree, as deep as widgets are nested.
// NOLINTNEXTLINE(misc-no-recursion)
void append(QByteArray& lines, const QAccessibleInterface& element, QPoint origin)
{
    if (element.state().invisible || element.role() == QAccessible::ScrollBar) {
        return;
    }
    const QString role = roleName(element.role());
    const bool hasText
        = !element.text(QAccessible::Name).isEmpty() || !element.text(QAccessible::Value).isEmpty();
    if (!role.isEmpty() && hasText) {
        lines += line(role, element, origin);
    }
    for (int i = 0; i < element.childCount(); ++i) {
        if (const QAccessibleInterface* child = element.child(i)) {
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
    if (const auto* root = QAccessible::queryAccessibleInterface(&window)) {
        append(lines, *root, base.mapToGlobal(QPoint(0, 0)));
    }
    return lines;
}

} // namespace quillbrook::lab
