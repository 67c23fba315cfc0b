#pragma once

#include "report/ReportRecords.h"

#include <QWidget>

#include <cstdint>

namespace quillbrook {

class CardRow;
class DataProvider;
class IconButton;

/// The head of the Today page: title, period picker, information button, and four figures.
class TodayOverviewView final : public QWidget {
    Q_OBJECT

public:
    explicit TodayOverviewView(DataProvider& provider, QWidget* parent = nullptr);

    void setFigures(
        const TodayOverview& overview, std::int64_t appCount, std::int64_t keystrokeCount);

private:
    void showInfo();

    IconButton* info;
    CardRow* figures;
};

} // namespace quillbrook
