#pragma once

#include "pages/views/Page.h"
#include "report/Periods.h"

namespace quillbrook {

/// Stands where a page is yet to come: its symbol and its title.
class PlaceholderPage final : public Page {
    Q_OBJECT

public:
    explicit PlaceholderPage(NavTab tab, QWidget* parent = nullptr);

    void show(const DashboardData&) override {}
};

} // namespace quillbrook
