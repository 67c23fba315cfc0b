#pragma once

#include "pages/views/Page.h"

namespace quillbrook {

class CardRow;
class MarkView;
class Section;

/// The Tokens page: four figures, the keys of each hour and input method, and the applications by
/// estimated tokens.
class KeylogView final : public Page {
    Q_OBJECT

public:
    explicit KeylogView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    QWidget* makeCharts();

    CardRow* cards;
    MarkView* bars;
    Section* methods;
    MarkView* ring;
    QWidget* charts;
    Section* ranking;
    MarkView* apps;
};

} // namespace quillbrook
