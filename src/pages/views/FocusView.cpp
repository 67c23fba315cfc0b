#include "pages/views/FocusView.h"

#include "pages/figures/FocusFigures.h"
#include "pages/kit/BorderedButton.h"
#include "pages/kit/CardRow.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/Motto.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/Section.h"
#include "pages/views/PeriodPicker.h"
#include "report/DataProvider.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 280;
constexpr CardRowForm kCardForm{
    .spacing = 12, .shrinking = {.value = 0.7, .title = 1}, .valuePixels = 18};
constexpr int kCards = 4;
constexpr int kHoursHeight = 200;
constexpr int kChartHeight = 180;
constexpr int kBucketsHeight = 320;
constexpr int kBetweenSections = 12;

} // namespace

FocusView::FocusView(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 20}, parent)
    , cards(new CardRow(kCards, kCardForm))
    , distribution(new Section("活跃时长分布", {}))
    , hours(new MarkView("活跃时长分布"))
    , buckets(new Section("番茄钟分布", {}))
    , lengths(new MarkView("番茄钟分布"))
    , daily(new Section("近7天日均番茄钟", {}))
    , means(new MarkView("近7天日均番茄钟"))
{
    auto* head = new PageHead(plainTitle("Focus 分析", TextStyle::title2));
    head->add(new PeriodPicker(tools.provider, NavTab::focus, kPickerWidth));
    auto* refresh = new BorderedButton("arrow.clockwise", {}, "刷新");
    connect(refresh, &BorderedButton::clicked, this,
        [&provider = tools.provider] { provider.refresh(); });
    head->add(refresh);

    distribution->addNote("该小时活跃秒数 / (有活跃天数 × 60分钟) ● 绿色=高效(≥80%)");
    distribution->content().addWidget(hours);
    hours->setPictureHeight(kHoursHeight);
    buckets->content().addWidget(lengths);
    buckets->content().addStretch();
    buckets->setFixedHeight(kBucketsHeight);
    lengths->setPictureHeight(kChartHeight);
    daily->content().addWidget(means);
    means->setPictureHeight(kChartHeight);

    auto* pair = new QHBoxLayout;
    pair->setSpacing(kBetweenSections);
    pair->addWidget(buckets, 1, Qt::AlignTop);
    pair->addWidget(daily, 1, Qt::AlignTop);

    column()->addWidget(head);
    column()->addWidget(cards);
    column()->addWidget(distribution);
    column()->addLayout(pair);
    column()->addWidget(new Motto("应如所住，而生其心。"));
    column()->addStretch();
}

void FocusView::show(const DashboardData& data)
{
    cards->setFigures(focusCards(data.focusHours));
    distribution->setEmpty(activeHours(data.focusHours).empty());
    hours->setPicture([rows = data.focusHours](Size size, const TextWidth& textWidth) {
        return activeDistributionMarks(rows, size, textWidth);
    });
    buckets->setEmpty(data.durationBuckets.empty());
    lengths->setPicture([rows = data.durationBuckets](Size size, const TextWidth& textWidth) {
        return durationBucketMarks(rows, size, textWidth);
    });
    daily->setEmpty(data.dailyAvgSessions.empty());
    means->setPicture([rows = data.dailyAvgSessions](Size size, const TextWidth& textWidth) {
        return dailyAvgMarks(rows, size, textWidth);
    });
}

} // namespace quillbrook
