#include "pages/views/TodayOverviewView.h"

#include "pages/figures/TodayFigures.h"
#include "pages/kit/CardRow.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/InfoPopover.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/PageTitle.h"
#include "pages/views/PeriodPicker.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 140;
constexpr int kInfoPixels = 14;
constexpr int kHeadSpacing = 4; // the button pads its symbol by itself
constexpr int kSpacing = 16;
constexpr int kUnderHeadline = 2;
constexpr int kCards = 4;
constexpr CardRowForm kCardForm{.shrinking = {.value = 0.7, .title = 1}};

} // namespace

TodayOverviewView::TodayOverviewView(DataProvider& provider, QWidget* parent)
    : QWidget(parent)
    , info(new IconButton("info.circle", kInfoPixels, "指标说明"))
    , figures(new CardRow(kCards, kCardForm))
{
    auto* title = new PageTitle("Today Is a Present", PageTitle::Design::serif);
    auto* head = new PageHead(title, kHeadSpacing);
    head->add(new PeriodPicker(provider, NavTab::today, kPickerWidth));
    head->add(info);
    connect(info, &IconButton::clicked, this, &TodayOverviewView::showInfo);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addWidget(head);
    column->addWidget(figures);
}

void TodayOverviewView::setFigures(
    const TodayOverview& overview, std::int64_t appCount, std::int64_t keystrokeCount)
{
    figures->setFigures(overviewCards(overview, appCount, keystrokeCount));
}

void TodayOverviewView::showInfo()
{
    auto* popover = new InfoPopover({}, info);
    popover->setAttribute(Qt::WA_DeleteOnClose);
    popover->addHeadline("指标说明", kUnderHeadline);
    for (const InfoItem& item : kpiInfoItems()) {
        popover->addEntry({.symbol = toQString(item.symbol),
            .color = item.color,
            .name = toQString(item.name),
            .detail = toQString(item.detail)});
    }
    popover->open();
}

} // namespace quillbrook
