#include "pages/views/PastPage.h"

#include "pages/figures/PastFigures.h"
#include "pages/kit/Motto.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/SegmentedPicker.h"
#include "pages/views/AppTreemapSection.h"
#include "pages/views/FigureRow.h"

#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 380;
constexpr int kHeaderSpacing = 12;
constexpr int kCards = 4;
constexpr FigureCard::Shrinking kShrinking{.value = 0.6, .title = 0.6};

} // namespace

PastPage::PastPage(
    const QStringList& periods, AppTreemap::CategoryChange onCategoryChange, QWidget* parent)
    : ScrollPage({.around = 20, .between = 20}, parent)
    , picker(new SegmentedPicker("时段", periods, kPickerWidth))
    , metrics(new FigureRow(kCards, kShrinking))
    , treemap(new AppTreemapSection(std::move(onCategoryChange)))
{
    auto* header = new QVBoxLayout;
    header->setSpacing(kHeaderSpacing);
    header->addWidget(new PageTitle("The Past Is History", PageTitle::Design::system));
    header->addWidget(picker);
    column()->addLayout(header);
    metrics->hide();
    column()->addWidget(metrics);
    column()->addWidget(treemap);
    column()->addWidget(new Motto("是日已过，命亦随减，如少水鱼，斯有何乐"));
    column()->addStretch();
    connect(picker, &SegmentedPicker::picked, this, &PastPage::periodPicked);
}

void PastPage::setData(const DashboardData& data)
{
    metrics->setVisible(data.historyOverview.has_value());
    if (data.historyOverview) {
        metrics->setFigures(metricCards(*data.historyOverview));
    }
    treemap->setAppUsage(data.appUsage);
}

void PastPage::setPeriod(int index)
{
    picker->setCurrent(index);
}

} // namespace quillbrook
