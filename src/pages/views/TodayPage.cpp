#include "pages/views/TodayPage.h"

#include "pages/kit/Motto.h"
#include "pages/views/TimelineView.h"
#include "pages/views/TodayOverviewView.h"
#include "platform/Platform.h"

#include <QVBoxLayout>

namespace quillbrook {

TodayPage::TodayPage(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 20}, parent)
    , overview(new TodayOverviewView(tools.provider))
    , timeline(new TimelineView(tools.platform.userDefaults))
{
    overview->hide();
    column()->addWidget(overview);
    column()->addWidget(timeline);
    column()->addWidget(new Motto("一切有为法，如梦幻泡影，如露亦如电"));
    column()->addStretch();
}

void TodayPage::show(const DashboardData& data)
{
    overview->setVisible(data.overview.has_value());
    if (data.overview) {
        overview->setFigures(*data.overview, static_cast<std::int64_t>(data.appUsage.size()),
            data.totalKeylogKeystrokes);
    }
    timeline->setTimeline(data.hourlyTimeline);
}

} // namespace quillbrook
