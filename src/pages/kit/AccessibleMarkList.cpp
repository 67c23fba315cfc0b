#include "pages/kit/AccessibleMarkList.h"

#include "pages/kit/Convert.h"
#include "pages/kit/MarkList.h"

#include <QPointer>
#include <QStringList>
#include <QWindow>

namespace quillbrook {

namespace {

/// One row. It reads all from the list at each question, so that it never tells of data that is
/// gone.
class AccessibleRow final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleRow(MarkList* list, int row) : list(list), row(row) {}

    bool isValid() const override { return list != nullptr && row < list->rowCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override
    {
        return list != nullptr ? list->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(list.data());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid()) {
            return {};
        }
        const Mark mark = list->spokenMark(row);
        switch (kind) {
        case QAccessible::Name:
            return toQString(mark.name);
        case QAccessible::Value:
            return toQString(mark.value);
        case QAccessible::Description:
            // The value once more, as Linux hands on no text as an element's value; a check mark
            // is told as a state.
            return mark.value == kCheckedValue ? QString() : toQString(mark.value);
        default:
            return {};
        }
    }

    QRect rect() const override
    {
        if (!isValid()) {
            return {};
        }
        const QRect shape = toQRectF(bounds(list->spokenMark(row).shape)).toAlignedRect();
        const QRect place = shape.translated(list->rowPlace(row).topLeft());
        return {list->viewport()->mapToGlobal(place.topLeft()), place.size()};
    }

    QAccessible::Role role() const override
    {
        return isValid() ? accessibleRole(list->spokenMark(row).role) : QAccessible::ListItem;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        state.focusable = true;
        if (isValid()) {
            state.focused = list->hasFocus() && list->currentRow() == row;
            state.offscreen = !list->rowPlace(row).intersects(list->viewport()->rect());
            const Mark mark = list->spokenMark(row);
            state.checkable = mark.role == MarkRole::button;
            state.checked = mark.value == kCheckedValue;
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }

    void doAction(const QString& name) override
    {
        if (!isValid()) {
            return;
        }
        if (name == pressAction()) {
            list->press(row);
        } else if (name == setFocusAction()) {
            list->setFocus();
            list->setCurrentRow(row);
        }
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<MarkList> list;
    int row;
};

} // namespace

AccessibleMarkList::AccessibleMarkList(MarkList* list) : QAccessibleWidget(list, QAccessible::List)
{
}

MarkList* AccessibleMarkList::list() const
{
    return static_cast<MarkList*>(object());
}

int AccessibleMarkList::childCount() const
{
    return list()->rowCount();
}

QAccessibleInterface* AccessibleMarkList::child(int index) const
{
    if (index < 0 || index >= childCount()) {
        return nullptr;
    }
    return children.at(index, [&] { return new AccessibleRow(list(), index); });
}

QAccessibleInterface* AccessibleMarkList::childAt(int x, int y) const
{
    const QPoint point = list()->viewport()->mapFromGlobal(QPoint(x, y));
    const auto row = list()->rowAt(point);
    return row && list()->viewport()->rect().contains(point) ? child(*row) : nullptr;
}

QAccessibleInterface* AccessibleMarkList::focusChild() const
{
    const auto current = list()->currentRow();
    return current && list()->hasFocus() ? child(*current) : nullptr;
}

int AccessibleMarkList::indexOfChild(const QAccessibleInterface* item) const
{
    return children.placeOf(item);
}

} // namespace quillbrook
