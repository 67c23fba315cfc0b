#pragma once

#include "pages/kit/ScrollPage.h"
#include "report/ReportRecords.h"

#include <QStringList>

namespace quillbrook {

class TimelineView;
class TodayOverviewView;

/// The Today page: overview, timeline and motto.
class TodayPage final : public ScrollPage {
    Q_OBJECT

public:
    explicit TodayPage(const QStringList& periods, QWidget* parent = nullptr);

    void setData(const DashboardData& data);
    void setPeriod(int index);

signals:
    void periodPicked(int index);

private:
    TodayOverviewView* overview;
    TimelineView* timeline;
};

} // namespace quillbrook
