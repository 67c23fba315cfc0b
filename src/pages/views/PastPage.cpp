#include "pages/views/PastPage.h"

#include "pages/figures/PastFigures.h"
#include "pages/kit/CardRow.h"
#include "pages/kit/Motto.h"
#include "pages/kit/PageTitle.h"
#include "pages/views/AppTreemapSection.h"
#include "pages/views/PeriodPicker.h"
#include "report/DataProvider.h"

#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 380;
constexpr int kHeaderSpacing = 12;
constexpr int kCards = 4;
constexpr CardRowForm kCardForm{.shrinking = {.value = 0.6, .title = 0.6}};

} // namespace

PastPage::PastPage(const PageTools& tools, QWidget* parent)
    : Page({.around = 20, .between = 20}, parent)
    , metrics(new CardRow(kCards, kCardForm))
    , treemap(new AppTreemapSection([&provider = tools.provider](const std::string& bundleId,
                                        std::optional<std::int64_t> categoryId) {
        provider.changeAppCategory(bundleId, categoryId);
    }))
{
    auto* header = new QVBoxLayout;
    header->setSpacing(kHeaderSpacing);
    header->addWidget(new PageTitle("The Past Is History", PageTitle::Design::system));
    header->addWidget(new PeriodPicker(tools.provider, NavTab::history, kPickerWidth));
    column()->addLayout(header);
    metrics->hide();
    column()->addWidget(metrics);
    column()->addWidget(treemap);
    column()->addWidget(new Motto("是日已过，命亦随减，如少水鱼，斯有何乐"));
    column()->addStretch();
}

void PastPage::show(const DashboardData& data)
{
    metrics->setVisible(data.historyOverview.has_value());
    if (data.historyOverview) {
        metrics->setFigures(metricCards(*data.historyOverview));
    }
    treemap->setAppUsage(data.appUsage);
}

} // namespace quillbrook
