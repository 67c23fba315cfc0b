#include "pages/views/HabitView.h"

#include "pages/figures/AppTreemapMarks.h"
#include "pages/figures/HabitFigures.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/Motto.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/Section.h"
#include "pages/views/AppCategorySheet.h"
#include "pages/views/PeriodPicker.h"
#include "report/DataProvider.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 260;
constexpr int kTagPixels = 14;
constexpr int kTreemapHeight = 240;
constexpr int kNothingHeight = 180;
constexpr int kTrendNothingHeight = 200;
constexpr int kChartsHeight = 360;
constexpr int kBetweenCharts = 12;

MarkView* fillingView(const QString& name)
{
    auto* view = new MarkView(name);
    view->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return view;
}

} // namespace

HabitView::HabitView(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 20}, parent)
    , categories(new Section({}, {.panel = withoutPanel(), .emptyHeight = kNothingHeight}))
    , treemap(new MarkView("分类"))
    , ranking(new Section("分类时长排序", {}))
    , bars(fillingView("分类时长排序"))
    , trend(new Section(
          "分类时长趋势（近15天）", {.emptyText = "加载中…", .emptyHeight = kTrendNothingHeight}))
    , areas(fillingView("分类时长趋势（近15天）"))
    , trendSubscription(
          tools.provider.categoryTrend.observe([this](const auto& points) { showTrend(points); }))
{
    auto* head = new PageHead(new PageTitle("Habits Shape Us", PageTitle::Design::serif));
    head->add(new PeriodPicker(tools.provider, NavTab::habit, kPickerWidth));
    auto* tag = new IconButton("tag", kTagPixels, "管理App分类");
    connect(tag, &IconButton::clicked, this, [this, tools] { manageCategories(tools); });
    head->add(tag);

    treemap->setPictureHeight(kTreemapHeight);
    treemap->setCornerRadius(kTreemapRadius);
    categories->content().addWidget(treemap);

    column()->addWidget(head);
    column()->addWidget(categories);
    column()->addWidget(makeCharts());
    column()->addWidget(new Motto("What you do today shapes who you become tomorrow"));
    column()->addStretch();
    showTrend(tools.provider.categoryTrend.get());
}

void HabitView::manageCategories(const PageTools& tools)
{
    auto* sheet = new AppCategorySheet(tools.platform, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::finished, this, [&provider = tools.provider] { provider.refresh(); });
    sheet->open();
}

QWidget* HabitView::makeCharts()
{
    ranking->content().addWidget(bars, 1);
    trend->content().addWidget(areas, 1);
    auto* band = new QWidget;
    band->setFixedHeight(kChartsHeight);
    // Each panel leaves its half of the gap between them free within its own share of the width.
    auto* left = new QVBoxLayout;
    left->setContentsMargins(0, 0, kBetweenCharts / 2, 0);
    left->addWidget(ranking);
    auto* right = new QVBoxLayout;
    right->setContentsMargins(kBetweenCharts / 2, 0, 0, 0);
    right->addWidget(trend);
    auto* row = new QHBoxLayout(band);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addLayout(left, 2);
    row->addLayout(right, 3);
    return band;
}

void HabitView::show(const DashboardData& data)
{
    categories->setEmpty(data.categoryUsage.empty());
    treemap->setPicture([items = data.categoryUsage](Size size, const TextWidth&) {
        return categoryTreemapMarks(items, size);
    });
    ranking->setEmpty(data.categoryUsage.empty());
    bars->setPicture([items = data.categoryUsage](Size size, const TextWidth& textWidth) {
        return categoryBarMarks(items, size, textWidth);
    });
}

void HabitView::showTrend(const std::vector<CategoryTrendPoint>& points)
{
    trend->setEmpty(points.empty());
    areas->setPicture([points](Size size, const TextWidth& textWidth) {
        return categoryTrendMarks(points, size, textWidth);
    });
}

} // namespace quillbrook
