#pragma once

#include "base/Property.h"
#include "pages/views/Page.h"

namespace quillbrook {

class MarkView;
class Section;

/// The Habit page: the categories of a period as a treemap and as a ranking, and their shares over
/// the last fifteen days.
class HabitView final : public Page {
    Q_OBJECT

public:
    explicit HabitView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    void manageCategories(const PageTools& tools);
    QWidget* makeCharts();
    void showTrend(const std::vector<CategoryTrendPoint>& points);

    Section* categories;
    MarkView* treemap;
    Section* ranking;
    MarkView* bars;
    Section* trend;
    MarkView* areas;
    Subscription trendSubscription;
};

} // namespace quillbrook
