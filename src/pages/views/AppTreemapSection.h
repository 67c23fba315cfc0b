#pragma once

#include "pages/views/AppTreemap.h"

#include <QWidget>

#include <vector>

class QLabel;

namespace quillbrook {

class FlowLayout;

/// The applications of the Past page: title, treemap and legend.
class AppTreemapSection final : public QWidget {
    Q_OBJECT

public:
    explicit AppTreemapSection(
        AppTreemap::CategoryChange onCategoryChange, QWidget* parent = nullptr);

    void setAppUsage(const std::vector<AppUsage>& appUsage);

private:
    QLabel* nothing;
    QWidget* content;
    AppTreemap* treemap;
    FlowLayout* legend;
};

} // namespace quillbrook
