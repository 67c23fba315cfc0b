#pragma once

#include "pages/figures/TimelineMarks.h"

#include <QVariantAnimation>
#include <QWidget>

#include <vector>

namespace quillbrook {

class Legend;
class MarkView;
class Section;
class UserDefaults;

/// The day hour by hour with its legend, and its export as a CSV file.
class TimelineView final : public QWidget {
    Q_OBJECT

public:
    /// `defaults` keeps the folder of the last export.
    explicit TimelineView(UserDefaults& defaults, QWidget* parent = nullptr);

    void setTimeline(const std::vector<HourlyTimelineEntry>& timeline);

    /// Asks for a file and writes the day as it is now into it.
    void exportCSV();

private:
    void showChart();
    void toggleHighlight(const QString& appName);

    UserDefaults& defaults;
    std::vector<HourlyTimelineEntry> timeline{};
    TimelineHighlight highlight{};
    QVariantAnimation fade{}; // from one highlight to the next
    Section* section;
    MarkView* chart;
    QWidget* foot;
    Legend* legend;
};

} // namespace quillbrook
