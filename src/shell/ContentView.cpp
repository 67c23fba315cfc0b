#include "shell/ContentView.h"

#include "pages/kit/EmptyState.h"
#include "pages/kit/Line.h"
#include "pages/kit/LoadingState.h"
#include "pages/views/PastPage.h"
#include "pages/views/TodayPage.h"
#include "platform/qt/QtText.h"
#include "shell/Sidebar.h"
#include "shell/TitleBlock.h"

#include <QHBoxLayout>
#include <QSplitter>
#include <QStackedWidget>
#include <QStringList>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kToolbarPadding = 10;
constexpr int kToolbarIndent = 20;

template <typename Period>
QStringList labelsOf()
{
    QStringList labels;
    for (const auto& each : allCases<Period>) {
        labels.append(toQString(each.rawValue));
    }
    return labels;
}

/// A period's place in its picker, which follows the order of its cases.
template <typename Period>
int indexOf(Period period)
{
    return static_cast<int>(period);
}

} // namespace

ContentView::ContentView(DataProvider& provider, Heartbeat updateHeartbeat, QWidget* parent)
    : QWidget(parent)
    , provider(provider)
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
    auto* main = new QWidget;
    auto* column = new QVBoxLayout(main);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(toolbar);
    column->addWidget(new Line);
    column->addWidget(detail, 1);

    auto* split = new QSplitter(Qt::Horizontal);
    split->setChildrenCollapsible(false);
    split->setHandleWidth(1);
    split->addWidget(sidebar);
    split->addWidget(main);
    split->setStretchFactor(1, 1);
    sidebar->lower(); // to be the first for screen readers; the splitter turns the order around
    split->setSizes({Sidebar::kIdealWidth, Sidebar::kIdealWidth * 4});
    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(split);

    connect(sidebar, &Sidebar::selected, this, [this](NavTab tab) {
        if (tab != this->provider.selectedTab.get()) {
            this->provider.selectedTab.set(tab);
        }
    });
    observeSelection();
    observePeriod(provider.historyPeriod);
    observePeriod(provider.keylogPeriod);
    observePeriod(provider.todayPeriod);
    observePeriod(provider.habitPeriod);
    observePeriod(provider.sessionsPeriod);
    observePeriod(provider.idlesPeriod);
    observePeriod(provider.focusPeriod);
    observePeriod(provider.alertsPeriod);
    subscriptions.push_back(provider.data.observe([this](const auto&) { showDetail(); }));
    subscriptions.push_back(provider.isLoading.observe([this](bool) {
        if (!this->provider.data.get()) {
            showDetail();
        }
    }));
    sidebar->setSelected(provider.selectedTab.get());
    showDetail();
}

void ContentView::observeSelection()
{
    subscriptions.push_back(provider.selectedTab.observe(
        [this, shown = provider.selectedTab.get()](NavTab tab) mutable {
            if (std::exchange(shown, tab) == tab) {
                return;
            }
            sidebar->setSelected(tab);
            showDetail();
            updateHeartbeat(rawValue(tab));
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
    const NavTab tab = provider.selectedTab.get();
    std::optional<Page> left; // goes only once the next page stands in its place
    if (!page || page->tab != tab) {
        left = std::exchange(page, makePage(tab));
        detail->addWidget(page->widget.get());
    }
    page->setData(*data);
    detail->setCurrentWidget(page->widget.get());
}

ContentView::Page ContentView::makePage(NavTab tab)
{
    switch (tab) {
    case NavTab::today:
        return makePeriodPage(
            tab, std::make_unique<TodayPage>(labelsOf<TodayPeriod>()), provider.todayPeriod);
    case NavTab::history:
        return makePeriodPage(tab,
            std::make_unique<PastPage>(labelsOf<HistoryPeriod>(),
                [this](const std::string& bundleId, std::optional<std::int64_t> categoryId) {
                    provider.changeAppCategory(bundleId, categoryId);
                }),
            provider.historyPeriod);
    default:
        return {.tab = tab,
            .widget = std::make_unique<EmptyState>(
                Sidebar::symbolOf(tab), toQString(rawValue(tab)), QString()),
            .setData = [](const DashboardData&) {}};
    }
}

template <typename PageWidget, typename Period>
ContentView::Page ContentView::makePeriodPage(
    NavTab tab, std::unique_ptr<PageWidget> widget, Property<Period>& period)
{
    PageWidget* shown = widget.get();
    shown->setPeriod(indexOf(period.get()));
    connect(shown, &PageWidget::periodPicked, this, [&period](int index) {
        period.set(allCases<Period>[static_cast<std::size_t>(index)].value);
    });
    return {.tab = tab,
        .widget = std::move(widget),
        .setData = [shown](const DashboardData& data) { shown->setData(data); },
        .period = period.observe([shown](Period chosen) { shown->setPeriod(indexOf(chosen)); })};
}

} // namespace quillbrook
