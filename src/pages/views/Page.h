#pragma once

#include "pages/kit/ScrollPage.h"
#include "report/ReportRecords.h"

namespace quillbrook {

class DataProvider;
struct Platform;

/// What pages are made with. Both outlive every page.
struct PageTools {
    DataProvider& provider;
    const Platform& platform;
};

/// A page of the dashboard. It binds itself to the provider for all that the user picks on it, and
/// is handed each record that is published while it is on screen.
class Page : public ScrollPage {
    Q_OBJECT

public:
    using QWidget::show;
    using ScrollPage::ScrollPage;

    virtual void show(const DashboardData& data) = 0;
};

} // namespace quillbrook
