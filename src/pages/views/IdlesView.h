#pragma once

#include "pages/views/Page.h"

class QLabel;

namespace quillbrook {

class RecordTable;

/// The Idles page, for the search for faults: the newest idle periods as they were recorded.
class IdlesView final : public Page {
    Q_OBJECT

public:
    explicit IdlesView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    const Platform& platform;
    QLabel* count;
    QLabel* total;
    RecordTable* table;
};

} // namespace quillbrook
