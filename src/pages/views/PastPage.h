#pragma once

#include "pages/kit/ScrollPage.h"
#include "pages/views/AppTreemap.h"
#include "report/ReportRecords.h"

#include <QStringList>

namespace quillbrook {

class AppTreemapSection;
class FigureRow;
class SegmentedPicker;

/// The Past page: header with picker, four figures, the treemap of applications and a motto.
class PastPage final : public ScrollPage {
    Q_OBJECT

public:
    PastPage(const QStringList& periods, AppTreemap::CategoryChange onCategoryChange,
        QWidget* parent = nullptr);

    void setData(const DashboardData& data);
    void setPeriod(int index);

signals:
    void periodPicked(int index);

private:
    SegmentedPicker* picker;
    FigureRow* metrics;
    AppTreemapSection* treemap;
};

} // namespace quillbrook
