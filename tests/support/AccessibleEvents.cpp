#include "support/AccessibleEvents.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace quillbrook {

namespace {

std::vector<AccessibleEvents::Told>& collected()
{
    static std::vector<AccessibleEvents::Told> events;
    return events;
}

/// Without a screen reader Qt tells nothing, and no public function says that there is one.
void setReaderPresent(bool isPresent)
{
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(isPresent);
}

} // namespace

AccessibleEvents::AccessibleEvents()
{
    collected().clear();
    setReaderPresent(true);
    QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        collected().push_back({event->object(), event->type(), event->child()});
    });
}

AccessibleEvents::~AccessibleEvents()
{
    QAccessible::installUpdateHandler(nullptr);
    setReaderPresent(false);
}

const std::vector<AccessibleEvents::Told>& AccessibleEvents::all() const
{
    return collected();
}

std::vector<QAccessible::Event> AccessibleEvents::of(const QObject& object) const
{
    std::vector<QAccessible::Event> events;
    for (const Told& told : collected()) {
        if (told.object == &object) {
            events.push_back(told.type);
        }
    }
    return events;
}

} // namespace quillbrook
