#pragma once

#include "report/ReportRecords.h"

#include <QStringList>
#include <QWidget>

#include <cstdint>

namespace quillbrook {

class FigureRow;
class IconButton;
class SegmentedPicker;

/// The head of the Today page: title, period picker, information button, and four figures.
class TodayOverviewView final : public QWidget {
    Q_OBJECT

public:
    explicit TodayOverviewView(const QStringList& periods, QWidget* parent = nullptr);

    void setFigures(
        const TodayOverview& overview, std::int64_t appCount, std::int64_t keystrokeCount);
    void setPeriod(int index);

signals:
    void periodPicked(int index);

private:
    void showInfo();

    SegmentedPicker* picker;
    IconButton* info;
    FigureRow* figures;
};

} // namespace quillbrook
