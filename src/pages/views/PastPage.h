#pragma once

#include "pages/views/Page.h"

namespace quillbrook {

class AppTreemapSection;
class CardRow;

/// The Past page: header with picker, four figures, the treemap of applications and a motto.
class PastPage final : public Page {
    Q_OBJECT

public:
    explicit PastPage(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    CardRow* metrics;
    AppTreemapSection* treemap;
};

} // namespace quillbrook
