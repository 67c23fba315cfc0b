#include "shell/ContentView.h"

#include "pages/kit/EmptyState.h"
#include "pages/kit/Line.h"
#include "pages/kit/LoadingState.h"
#include "pages/views/PageTable.h"
#include "shell/ShareScreenshotButton.h"
#include "shell/Sidebar.h"
#include "shell/SplitView.h"
#include "shell/TitleBlock.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kToolbarPadding = 10;
constexpr int kToolbarIndent = 20;

} // namespace

ContentView::ContentView(
    DataProvider& provider, const Platform& platform, Heartbeat updateHeartbeat, QWidget* parent)
    : QWidget(parent)
    , provider(provider)
    , platform(platform)
    , updateHeartbeat(std::move(updateHeartbeat))
    , sidebar(new Sidebar)
    , detail(new QStackedWidget)
    , loading(new LoadingState)
    , empty(new EmptyState(
          "antenna.radiowaves.left.and.right.slash", "无数据", "请确保监控服务正在运行"))
{
    detail->addWidget(loading);
    detail->addWidget(empty);

    auto* toolbar = new QHBoxLayout;
    toolbar->setContentsMargins(kToolbarIndent, kToolbarPadding, kToolbarIndent, kToolbarPadding);
    toolbar->addWidget(new TitleBlock);
    toolbar->addStretch();
    toolbar->addWidget(new ShareScreenshotButton(platform.userDefaults));
    auto* main = new QWidget;
    auto* column = new QVBoxLayout(main);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(toolbar);
    column->addWidget(new Line);
    column->addWidget(detail, 1);

    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(new SplitView(sidebar, main));

    connect(sidebar, &Sidebar::selected, this, [this](NavTab tab) {
        if (tab != this->provider.selectedTab.get()) {
            this->provider.selectedTab.set(tab);
        }
    });
    observeSelection();
    for (const auto& tab : allCases<NavTab>) {
        withPeriod(provider, tab.value, [this](auto& period) { observePeriod(period); });
    }
    subscriptions.push_back(provider.data.observe([this](const auto&) { showDetail(); }));
    subscriptions.push_back(provider.isLoading.observe([this](bool) {
        if (!this->provider.data.get()) {
            showDetail();
        }
    }));
    sidebar->setSelected(provider.selectedTab.get());
    showDetail();
}

ContentView::~ContentView() = default;

void ContentView::observeSelection()
{
    subscriptions.push_back(provider.selectedTab.observe(
        [this, shown = provider.selectedTab.get()](NavTab tab) mutable {
            if (std::exchange(shown, tab) == tab) {
                return;
            }
            // First, so that a fault in the making of the page is told of that page.
            updateHeartbeat(rawValue(tab));
            sidebar->setSelected(tab);
            showDetail();
            provider.refresh();
        }));
}

template <typename Period>
void ContentView::observePeriod(Property<Period>& period)
{
    subscriptions.push_back(period.observe([this, shown = period.get()](Period chosen) mutable {
        if (std::exchange(shown, chosen) != chosen) {
            provider.refresh();
        }
    }));
}

void ContentView::showDetail()
{
    const auto& data = provider.data.get();
    if (!data) {
        detail->setCurrentWidget(provider.isLoading.get() ? static_cast<QWidget*>(loading) : empty);
        return;
    }
    if (const NavTab tab = provider.selectedTab.get(); !page || pageTab != tab) {
        openPage(tab);
    }
    page->show(*data);
    detail->setCurrentWidget(page.get());
}

void ContentView::openPage(NavTab tab)
{
    // The old page goes only once the next one stands in its place.
    const std::unique_ptr<Page> left = std::exchange(
        page, pageOf(tab).make({.provider = provider, .platform = platform}, detail));
    pageTab = tab;
    detail->addWidget(page.get());
    detail->setCurrentWidget(page.get());
}

} // namespace quillbrook
