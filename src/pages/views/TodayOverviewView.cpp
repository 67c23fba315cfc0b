#include "pages/views/TodayOverviewView.h"

#include "pages/figures/TodayFigures.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/Popover.h"
#include "pages/views/FigureRow.h"
#include "pages/views/KpiInfo.h"
#include "pages/views/PeriodPicker.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 140;
constexpr int kInfoPixels = 14;
constexpr int kHeadSpacing = 4; // the button pads its symbol by itself
constexpr int kSpacing = 16;
constexpr int kPopoverWidth = 380;
constexpr int kCards = 4;
constexpr FigureCard::Shrinking kShrinking{.value = 0.7, .title = 1};

} // namespace

TodayOverviewView::TodayOverviewView(DataProvider& provider, QWidget* parent)
    : QWidget(parent)
    , info(new IconButton("info.circle", kInfoPixels, "指标说明"))
    , figures(new FigureRow(kCards, kShrinking))
{
    auto* head = new QHBoxLayout;
    head->addWidget(new PageTitle("Today Is a Present", PageTitle::Design::serif));
    head->addStretch();
    head->setSpacing(kHeadSpacing);
    head->addWidget(new PeriodPicker(provider, NavTab::today, kPickerWidth));
    head->addWidget(info);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addLayout(head);
    column->addWidget(figures);

    connect(info, &IconButton::clicked, this, &TodayOverviewView::showInfo);
}

void TodayOverviewView::setFigures(
    const TodayOverview& overview, std::int64_t appCount, std::int64_t keystrokeCount)
{
    figures->setFigures(overviewCards(overview, appCount, keystrokeCount));
}

void TodayOverviewView::showInfo()
{
    auto* popover = new Popover(kPopoverWidth, info);
    popover->setAttribute(Qt::WA_DeleteOnClose);
    fillKpiInfo(*popover->content());
    popover->open();
}

} // namespace quillbrook
