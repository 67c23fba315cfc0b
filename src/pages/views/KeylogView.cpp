#include "pages/views/KeylogView.h"

#include "pages/figures/KeylogFigures.h"
#include "pages/kit/CardRow.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/Motto.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/Panel.h"
#include "pages/kit/Section.h"
#include "pages/views/PeriodPicker.h"
#include "pages/views/TokenInfoPopover.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 240;
constexpr int kInfoPixels = 15;
constexpr CardRowForm kCardForm{.spacing = 16, .shrinking = {.value = 0.6, .title = 1}};
constexpr int kCards = 4;
constexpr PanelForm kPanel{.padding = 16};
constexpr int kMethodsWidth = 180;
constexpr int kBetweenCharts = 16;
constexpr int kUnderHeadline = 8;
SectionForm chartForm()
{
    return {.panel = withoutPanel(), .spacing = kUnderHeadline};
}

} // namespace

KeylogView::KeylogView(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 20}, parent)
    , cards(new CardRow(kCards, kCardForm))
    , bars(new MarkView("分小时的击键次数"))
    , methods(new Section("分输入法的击键次数", chartForm()))
    , ring(new MarkView("分输入法的击键次数"))
    , charts(makeCharts())
    , ranking(new Section("应用的Token输入排名", {.panel = kPanel}))
    , apps(new MarkView("应用的Token输入排名"))
{
    auto* head = new PageHead(new PageTitle("Every Token Counts", PageTitle::Design::serif));
    head->add(new PeriodPicker(tools.provider, NavTab::keylog, kPickerWidth));
    auto* info = new IconButton("info.circle", kInfoPixels, "Token 换算逻辑");
    head->add(info);
    connect(info, &IconButton::clicked, info, [info] { openTokenInfo(info); });
    ranking->content().addWidget(apps);
    ranking->setEmpty(false);

    column()->addWidget(head);
    column()->addWidget(cards);
    column()->addWidget(charts);
    column()->addWidget(ranking);
    column()->addWidget(new Motto("心生种种法生，心灭种种法灭。"));
    column()->addStretch();
    show({});
}

QWidget* KeylogView::makeCharts()
{
    auto* hours = new Section("分小时的击键次数", chartForm());
    bars->setPictureHeight(static_cast<int>(kHourlyBarHeight));
    hours->content().addWidget(bars);
    hours->setEmpty(false);
    methods->content().addWidget(ring);
    methods->setFixedWidth(kMethodsWidth);

    auto* panel = new quillbrook::Panel(kPanel);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kBetweenCharts);
    row->addWidget(hours, 1, Qt::AlignTop);
    row->addWidget(methods, 0, Qt::AlignTop);
    return panel;
}

void KeylogView::show(const DashboardData& data)
{
    cards->setFigures(keylogCards(data));
    charts->setVisible(!data.keylogHourly.empty());
    bars->setPicture([rows = data.keylogHourly](Size size, const TextWidth& textWidth) {
        return hourlyBarMarks(rows, size.width, textWidth);
    });
    const std::vector<InputMethodStat> stats = inputMethodStats(data.keylogHourly);
    methods->setEmpty(stats.empty());
    ring->setPictureHeight(static_cast<int>(inputMethodHeight(stats.size())));
    ring->setPicture(
        [stats](Size size, const TextWidth&) { return inputMethodMarks(stats, size.width); });

    const std::vector<AppTokens> ranked = rankedApps(appStats(data.keylogHourly));
    ranking->setVisible(!ranked.empty());
    apps->setPictureHeight(static_cast<int>(appTokenHeight(ranked.size())));
    apps->setPicture([ranked](Size size, const TextWidth& textWidth) {
        return appTokenMarks(ranked, size, textWidth);
    });
}

} // namespace quillbrook
