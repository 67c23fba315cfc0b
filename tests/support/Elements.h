#pragma once

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <string>
#include <vector>

namespace quillbrook {

/// What a screen reader finds at one place.
struct Element {
    QAccessible::Role role = QAccessible::NoRole;
    std::string name{};
    std::string value{};

    bool operator==(const Element&) const = default;
};

inline void collectElements(const QAccessibleInterface& from, std::vector<Element>& elements)
{
    if (from.state().invisible) {
        return;
    }
    const Element element{from.role(), from.text(QAccessible::Name).toStdString(),
        from.text(QAccessible::Value).toStdString()};
    if (!element.name.empty()) {
        elements.push_back(element);
    }
    for (int i = 0; i < from.childCount(); ++i) {
        collectElements(*from.child(i), elements);
    }
}

/// All visible elements of one role in a widget, in reading order.
inline std::vector<Element> elementsOf(QWidget& widget, QAccessible::Role role)
{
    std::vector<Element> elements;
    collectElements(*QAccessible::queryAccessibleInterface(&widget), elements);
    std::erase_if(elements, [role](const Element& element) { return element.role != role; });
    return elements;
}

inline std::vector<std::string> namesOf(const std::vector<Element>& elements)
{
    std::vector<std::string> names;
    for (const Element& element : elements) {
        names.push_back(element.name);
    }
    return names;
}

/// A key that goes down and up.
inline void press(QWidget& widget, Qt::Key key)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &up);
}

} // namespace quillbrook
