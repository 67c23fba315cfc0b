#pragma once

#include "pages/views/Page.h"

namespace quillbrook {

class TimelineView;
class TodayOverviewView;

/// The Today page: overview, timeline and motto.
class TodayPage final : public Page {
    Q_OBJECT

public:
    explicit TodayPage(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    TodayOverviewView* overview;
    TimelineView* timeline;
};

} // namespace quillbrook
