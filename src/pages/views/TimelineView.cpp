#include "pages/views/TimelineView.h"

#include "pages/kit/IconButton.h"
#include "pages/kit/Legend.h"
#include "pages/kit/Line.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/SaveDialogue.h"
#include "pages/kit/Section.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kExportPixels = 14;
constexpr int kNothingHeight = 200;
constexpr int kLegendSpacing = 4;
constexpr int kMinimumWidth = 320;
constexpr int kFadeMs = 200;

} // namespace

TimelineView::TimelineView(UserDefaults& defaults, QWidget* parent)
    : QWidget(parent)
    , defaults(defaults)
    , section(new Section("时间线", {.panel = withoutPanel(), .emptyHeight = kNothingHeight}))
    , chart(new MarkView("时间线"))
    , foot(new QWidget)
    , legend(new Legend({.kind = Chip::Kind::button}))
{
    auto* exportButton = new IconButton("square.and.arrow.up", kExportPixels, "导出 CSV");
    connect(exportButton, &IconButton::clicked, this, &TimelineView::exportCSV);
    section->addToHead(exportButton);
    auto* footColumn = new QVBoxLayout(foot);
    footColumn->setContentsMargins(0, 0, 0, 0);
    footColumn->setSpacing(kLegendSpacing);
    footColumn->addWidget(new Line);
    footColumn->addWidget(legend);
    section->content().addWidget(chart);
    section->content().addWidget(foot);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(section);

    connect(legend, &Legend::pressed, this, &TimelineView::toggleHighlight);
    fade.setDuration(kFadeMs);
    fade.setEasingCurve(QEasingCurve::InOutQuad);
    fade.setStartValue(0.0);
    fade.setEndValue(1.0);
    connect(&fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        highlight.progress = progress.toDouble();
        showChart();
    });
    setTimeline({});
}

void TimelineView::setTimeline(const std::vector<HourlyTimelineEntry>& newTimeline)
{
    timeline = newTimeline;
    chart->setPictureHeight(static_cast<int>(timelineHeight(timeline.size())), kMinimumWidth);
    showChart();
    QList<LegendChip> chips;
    const AppColorMap colors = appColorMap(timeline);
    for (const auto& [appName, color] : legendApps(colors)) {
        chips.append({.name = toQString(appName), .tint = {color}});
    }
    legend->setEntries(chips);
    foot->setVisible(!colors.empty());
    section->setEmpty(timeline.empty());
}

void TimelineView::showChart()
{
    chart->setPicture([hours = timeline, shown = highlight](Size size, const TextWidth& textWidth) {
        return timelineMarks(hours, shown, size.width, textWidth);
    });
}

void TimelineView::toggleHighlight(const QString& appName)
{
    const std::string name = appName.toStdString();
    const bool isPicked = highlight.now == name;
    highlight.before = std::exchange(highlight.now, isPicked ? std::nullopt : std::optional(name));
    legend->setHighlighted(isPicked ? std::nullopt : std::optional(appName));
    fade.stop();
    fade.start();
}

void TimelineView::exportCSV()
{
    // The day as it is at the press; and the window's own dialogue, so that it is written also if
    // another page is opened meanwhile.
    offerToSave(window(),
        {.title = "导出时间线数据",
            .mimeType = "text/csv",
            .suffix = "csv",
            .name = "Quillbrook-timeline.csv",
            .bytes = QByteArray::fromStdString(generateCSV(timeline))},
        defaults);
}

} // namespace quillbrook
