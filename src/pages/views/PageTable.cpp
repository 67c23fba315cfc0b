#include "pages/views/PageTable.h"

#include "base/Fatal.h"
#include "pages/views/AboutView.h"
#include "pages/views/AlertsView.h"
#include "pages/views/FocusView.h"
#include "pages/views/HabitView.h"
#include "pages/views/IdlesView.h"
#include "pages/views/KeylogView.h"
#include "pages/views/PastPage.h"
#include "pages/views/SessionsView.h"
#include "pages/views/TodayPage.h"
#include "pages/views/iLifeView.h"

#include <algorithm>
#include <array>

namespace quillbrook {

namespace {

template <typename PageType>
std::unique_ptr<Page> make(const PageTools& tools, QWidget* parent)
{
    return std::make_unique<PageType>(tools, parent);
}

// Sessions and Idles are for the search for faults: they can be shown, and have no row.
constexpr std::array kPages = {
    PageEntry{NavTab::today, "知行", "calendar.day.timeline.left", make<TodayPage>},
    PageEntry{NavTab::history, "知行", "calendar.badge.clock", make<PastPage>},
    PageEntry{NavTab::life, "知行", "heart.circle", make<iLifeView>},
    PageEntry{NavTab::habit, "观照", "chart.bar.doc.horizontal", make<HabitView>},
    PageEntry{NavTab::focus, "观照", "scope", make<FocusView>},
    PageEntry{NavTab::keylog, "活动", "keyboard", make<KeylogView>},
    PageEntry{NavTab::alerts, "活动", "exclamationmark.triangle", make<AlertsView>},
    PageEntry{NavTab::about, {}, "info.circle", make<AboutView>},
    PageEntry{NavTab::session, {}, "doc.text.magnifyingglass", make<SessionsView>},
    PageEntry{NavTab::idles, {}, "doc.text.magnifyingglass", make<IdlesView>},
};

} // namespace

std::span<const PageEntry> pageTable()
{
    return kPages;
}

const PageEntry& pageOf(NavTab tab)
{
    const auto* const found = std::find_if(
        kPages.begin(), kPages.end(), [tab](const PageEntry& entry) { return entry.tab == tab; });
    if (found == kPages.end()) {
        fatal("pageOf: a tab without a page");
    }
    return *found;
}

} // namespace quillbrook
