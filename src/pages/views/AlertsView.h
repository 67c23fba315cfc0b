#pragma once

#include "pages/views/Page.h"

namespace quillbrook {

class AlertDayList;
class Clock;
class IconButton;

/// The Alerts page: each day's alerts along its hours, and the rules that they follow.
class AlertsView final : public Page {
    Q_OBJECT

public:
    explicit AlertsView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    QLayout* makeHead(DataProvider& provider);
    void showRules();

    const Clock& clock;
    IconButton* info;
    QWidget* nothing;
    AlertDayList* days;
};

} // namespace quillbrook
