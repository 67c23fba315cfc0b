#include "pages/views/AlertsView.h"

#include "pages/figures/AlertsFigures.h"
#include "pages/kit/EmptyState.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/InfoPopover.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/Panel.h"
#include "pages/views/AlertDayList.h"
#include "pages/views/PeriodPicker.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPadding = 24;
constexpr int kUnderHead = 16;
constexpr int kPickerWidth = 280;
constexpr int kInfoPixels = 14;
constexpr int kNothingHeight = 300;
constexpr PanelForm kNothingForm{.padding = 24};
constexpr InfoForm kRulesForm{.nameStyle = TextStyle::caption,
    .detailStyle = TextStyle::caption2,
    .behindSymbol = 6,
    .isDetailUnderName = true};

} // namespace

AlertsView::AlertsView(const PageTools& tools, QWidget* parent)
    : Page({.around = 0, .between = 0}, parent)
    , clock(tools.platform.clock)
    , info(new IconButton("info.circle", kInfoPixels, "告警触发条件"))
    , nothing(new quillbrook::Panel(kNothingForm)) // a frame has another thing of that name
    , days(new AlertDayList)
{
    column()->addLayout(makeHead(tools.provider));
    auto* inside = new QVBoxLayout(nothing);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(new EmptyState("checkmark.shield.fill", "暂无告警记录", "系统运行正常"));
    nothing->setMinimumHeight(kNothingHeight);
    auto* margins = new QVBoxLayout;
    margins->setContentsMargins(kPadding, 0, kPadding, 0);
    margins->addWidget(nothing);
    column()->addLayout(margins);
    column()->addWidget(days);
    column()->addSpacing(kPadding);
    column()->addStretch();
    connect(info, &IconButton::clicked, this, &AlertsView::showRules);
}

QLayout* AlertsView::makeHead(DataProvider& provider)
{
    auto* head = new PageHead(plainTitle("告警时间线", TextStyle::title2));
    head->add(new PeriodPicker(provider, NavTab::alerts, kPickerWidth));
    head->add(info);
    auto* margins = new QVBoxLayout;
    margins->setContentsMargins(kPadding, kPadding, kPadding, kUnderHead);
    margins->addWidget(head);
    return margins;
}

void AlertsView::show(const DashboardData& data)
{
    days->setDays(grouped(data.alerts), todayDateStr(clock.now()));
    days->setVisible(!data.alerts.empty());
    nothing->setVisible(data.alerts.empty());
}

void AlertsView::showRules()
{
    auto* rules = new InfoPopover(kRulesForm, info);
    rules->setAttribute(Qt::WA_DeleteOnClose);
    rules->addHeadline("告警触发条件");
    for (const AlertRule& rule : alertRules()) {
        rules->addEntry({.symbol = toQString(rule.symbol),
            .color = rule.color,
            .name = toQString(rule.title),
            .detail = toQString(rule.condition)});
    }
    rules->addHeadline("冷却时间");
    rules->addNote("高负载/内存 warning 30 分钟 · 图形/负载 critical 15 分钟");
    rules->addHeadline("采样频率");
    rules->addNote("系统快照每 60 秒采集一次");
    rules->open();
}

} // namespace quillbrook
