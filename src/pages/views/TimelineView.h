#pragma once

#include "pages/figures/TimelineMarks.h"

#include <QVariantAnimation>
#include <QWidget>

#include <string>
#include <vector>

namespace quillbrook {

class Legend;
class MarkView;
class Section;

/// The day hour by hour with its legend, and its export as a CSV file.
class TimelineView final : public QWidget {
    Q_OBJECT

public:
    explicit TimelineView(QWidget* parent = nullptr);

    void setTimeline(const std::vector<HourlyTimelineEntry>& timeline);

    /// Asks for a file and writes the day as it is now into it.
    void exportCSV();

private:
    void showChart();
    void toggleHighlight(const QString& appName);

    std::vector<HourlyTimelineEntry> timeline{};
    TimelineHighlight highlight{};
    QVariantAnimation fade{}; // from one highlight to the next
    Section* section;
    MarkView* chart;
    QWidget* foot;
    Legend* legend;
};

/// Writes `text` to a file as a whole or not at all; a failure has no effect.
void writeTextFile(const QString& path, const std::string& text);

} // namespace quillbrook
