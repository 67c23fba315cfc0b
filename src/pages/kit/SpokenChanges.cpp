#include "pages/kit/SpokenChanges.h"

#include <QAccessible>
#include <QWidget>

#include <algorithm>

namespace quillbrook {

namespace {

void tellOf(QWidget& widget, std::size_t child, QAccessible::Event what)
{
    QAccessibleEvent event(&widget, what);
    event.setChild(static_cast<int>(child));
    QAccessible::updateAccessibility(&event);
}

} // namespace

void tellSpokenChanges(
    QWidget& widget, const std::vector<SpokenText>& before, const std::vector<SpokenText>& now)
{
    const std::size_t both = std::min(before.size(), now.size());
    for (std::size_t child = 0; child < both; ++child) {
        if (before[child].name != now[child].name) {
            tellOf(widget, child, QAccessible::NameChanged);
        }
        if (before[child].value != now[child].value) {
            tellOf(widget, child, QAccessible::DescriptionChanged); // as which a value is read
        }
    }
    if (before.size() != now.size()) {
        QAccessibleEvent event(&widget, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace quillbrook
