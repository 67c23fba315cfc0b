#include "pages/kit/AccessibleViews.h"

#include "pages/kit/AccessibleMarkList.h"
#include "pages/kit/Convert.h"
#include "pages/kit/MarkList.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/PaintedChildren.h"
#include "pages/kit/Popover.h"
#include "pages/kit/Spoken.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QPointer>
#include <QWindow>

#include <algorithm>

namespace quillbrook {

namespace {

/// A mark that is spoken. It knows its view and its place among the spoken marks, and reads the
/// rest from the view at each question, so that it never tells of data that is gone.
class AccessibleMark final : public QAccessibleInterface {
public:
    AccessibleMark(MarkView* view, int place) : view(view), place(place) {}

    bool isValid() const override { return mark() != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override
    {
        return view != nullptr ? view->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(view.data());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override
    {
        const Mark* present = mark();
        if (present == nullptr) {
            return {};
        }
        if (kind == QAccessible::Name) {
            return toQString(present->name);
        }
        // The value once more as description, as Linux hands on no text as an element's value.
        const bool isValue = kind == QAccessible::Value || kind == QAccessible::Description;
        return isValue ? toQString(present->value) : QString();
    }

    QRect rect() const override
    {
        const Mark* present = mark();
        if (present == nullptr) {
            return {};
        }
        // Borders are rounded one by one, so that neighbours stay neighbours.
        const QRectF rect = toQRectF(bounds(present->shape));
        const QPoint from(qRound(rect.left()), qRound(rect.top()));
        const QPoint to(qRound(rect.right()), qRound(rect.bottom()));
        return {view->mapToGlobal(from), QSize(to.x() - from.x(), to.y() - from.y())};
    }

    QAccessible::Role role() const override
    {
        const Mark* present = mark();
        return present == nullptr ? QAccessible::StaticText : accessibleRole(present->role);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.invalid = !isValid();
        state.focusable = role() != QAccessible::StaticText;
        if (isValid() && view->currentMark()) {
            state.focused = view->hasFocus()
                && *view->currentMark() == view->spokenMarks()[static_cast<std::size_t>(place)];
        }
        return state;
    }

private:
    const Mark* mark() const
    {
        const auto index = static_cast<std::size_t>(place);
        if (view == nullptr || index >= view->spokenMarks().size()) {
            return nullptr;
        }
        return &view->marks()[view->spokenMarks()[index]];
    }

    QPointer<MarkView> view;
    int place;
};

class AccessibleMarkView final : public QAccessibleWidget {
public:
    explicit AccessibleMarkView(MarkView* view) : QAccessibleWidget(view, QAccessible::Grouping) {}

    int childCount() const override { return static_cast<int>(view()->spokenMarks().size()); }

    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        return children.at(index, [&] { return new AccessibleMark(view(), index); });
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        for (int index = 0; index < childCount(); ++index) {
            if (QAccessibleInterface* item = child(index); item->rect().contains(x, y)) {
                return item;
            }
        }
        return nullptr;
    }

    QAccessibleInterface* focusChild() const override
    {
        const auto& spoken = view()->spokenMarks();
        const auto current = view()->currentMark();
        const auto found
            = current ? std::find(spoken.begin(), spoken.end(), *current) : spoken.end();
        return found == spoken.end() || !view()->hasFocus()
            ? nullptr
            : child(static_cast<int>(found - spoken.begin()));
    }

    int indexOfChild(const QAccessibleInterface* item) const override
    {
        return children.placeOf(item);
    }

private:
    MarkView* view() const { return static_cast<MarkView*>(object()); }

    mutable PaintedChildren children{};
};

/// A widget that says itself what it is; a button among them can be pressed. An open popover is the
/// last child of its anchor, as windows of its kind are no children of the program.
class AccessibleSpoken final : public QAccessibleWidget {
public:
    AccessibleSpoken(QWidget* widget, const Spoken& spoken)
        : QAccessibleWidget(widget, spoken.accessibleRole())
        , spoken(spoken)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? spoken.accessibleValue()
                                          : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const auto* pressable = button()) {
            state.checkable = pressable->isCheckable();
            state.checked = pressable->isChecked();
            const QAccessible::Role role = spoken.accessibleRole();
            state.selectable = role == QAccessible::ListItem || role == QAccessible::PageTab;
            state.selected = state.selectable && pressable->isChecked();
        }
        if (const auto isUnfolded = spoken.isUnfolded()) {
            state.expandable = true;
            state.expanded = *isUnfolded;
            state.collapsed = !*isUnfolded;
        }
        return state;
    }

    QAccessibleInterface* parent() const override
    {
        return qobject_cast<Popover*>(object()) != nullptr
            ? QAccessible::queryAccessibleInterface(object()->parent())
            : QAccessibleWidget::parent();
    }

    int childCount() const override
    {
        return QAccessibleWidget::childCount() + (openPopover() == nullptr ? 0 : 1);
    }

    QAccessibleInterface* child(int index) const override
    {
        return index == QAccessibleWidget::childCount()
            ? QAccessible::queryAccessibleInterface(openPopover())
            : QAccessibleWidget::child(index);
    }

    int indexOfChild(const QAccessibleInterface* item) const override
    {
        Popover* popover = openPopover();
        return popover != nullptr && item->object() == popover
            ? QAccessibleWidget::childCount()
            : QAccessibleWidget::indexOfChild(item);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (button() != nullptr) {
            names.prepend(QAccessibleActionInterface::pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override
    {
        if (auto* pressable = button();
            pressable != nullptr && name == QAccessibleActionInterface::pressAction()) {
            pressable->click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    Popover* openPopover() const
    {
        auto* popover = object()->findChild<Popover*>(QString(), Qt::FindDirectChildrenOnly);
        return popover != nullptr && popover->isVisible() ? popover : nullptr;
    }

    QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(object()); }

    const Spoken& spoken; // a base of the widget
};

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    if (auto* view = qobject_cast<MarkView*>(object)) {
        return new AccessibleMarkView(view);
    }
    if (auto* list = qobject_cast<MarkList*>(object)) {
        return new AccessibleMarkList(list);
    }
    if (const auto* spoken = dynamic_cast<const Spoken*>(object)) {
        return new AccessibleSpoken(qobject_cast<QWidget*>(object), *spoken);
    }
    return nullptr;
}

} // namespace

void installAccessibleViews()
{
    QAccessible::installFactory(&interfaceFor);
}

} // namespace quillbrook
