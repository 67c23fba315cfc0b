#pragma once

#include "pages/views/AppTreemap.h"

#include <QWidget>

#include <vector>

namespace quillbrook {

class Legend;
class Section;

/// The applications of the Past page: title, treemap and legend.
class AppTreemapSection final : public QWidget {
    Q_OBJECT

public:
    explicit AppTreemapSection(
        AppTreemap::CategoryChange onCategoryChange, QWidget* parent = nullptr);

    void setAppUsage(const std::vector<AppUsage>& appUsage);

private:
    Section* section;
    AppTreemap* treemap;
    Legend* legend;
};

} // namespace quillbrook
