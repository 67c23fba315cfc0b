#pragma once

#include "pages/views/Page.h"

namespace quillbrook {

class CardRow;
class MarkView;
class Section;

/// The Focus page: four figures, the active share of each hour, the lengths of the sessions, and
/// their daily means.
class FocusView final : public Page {
    Q_OBJECT

public:
    explicit FocusView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    CardRow* cards;
    Section* distribution;
    MarkView* hours;
    Section* buckets;
    MarkView* lengths;
    Section* daily;
    MarkView* means;
};

} // namespace quillbrook
