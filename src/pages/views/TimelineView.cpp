#include "pages/views/TimelineView.h"

#include "pages/kit/Chip.h"
#include "pages/kit/FlowLayout.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/Line.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QSaveFile>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kExportPixels = 14;
constexpr int kNothingHeight = 200;
constexpr int kChipSpacing = 6;
constexpr int kLegendSpacing = 4;
constexpr int kSpacing = 12;
constexpr int kMinimumWidth = 320;
constexpr int kFadeMs = 200;

} // namespace

TimelineView::TimelineView(QWidget* parent)
    : QWidget(parent)
    , nothing(secondaryLabel("暂无数据", Look::font(TextStyle::caption)))
    , chart(new MarkView("时间线"))
    , legendSection(new QWidget)
    , chips(new FlowLayout(kChipSpacing))
{
    auto* exportButton = new IconButton("square.and.arrow.up", kExportPixels, "导出 CSV");
    connect(exportButton, &IconButton::clicked, this, &TimelineView::exportCSV);
    auto* head = new QHBoxLayout;
    head->addWidget(textLabel("时间线", Look::font(TextStyle::headline)));
    head->addStretch();
    head->addWidget(exportButton);

    nothing->setMinimumHeight(kNothingHeight);
    nothing->setAlignment(Qt::AlignCenter);

    auto* legend = new QVBoxLayout(legendSection);
    legend->setContentsMargins(0, 0, 0, 0);
    legend->setSpacing(kLegendSpacing);
    legend->addWidget(new Line);
    legend->addLayout(chips);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addLayout(head);
    column->addWidget(nothing);
    column->addWidget(chart);
    column->addWidget(legendSection);
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
    nothing->setVisible(timeline.empty());
    chart->setVisible(!timeline.empty());
    rebuildLegend();
}

void TimelineView::showChart()
{
    chart->setPicture([hours = timeline, shown = highlight](Size size, const TextWidth& textWidth) {
        return timelineMarks(hours, shown, size.width, textWidth);
    });
}

void TimelineView::rebuildLegend()
{
    chips->clear();
    const AppColorMap colors = appColorMap(timeline);
    for (const auto& [appName, color] : legendApps(colors)) {
        auto* chip = new Chip(Chip::Kind::button, toQString(appName),
            [color = color](const QPalette& palette) { return Look::color(color, palette); });
        chip->setChecked(highlight.now == appName);
        connect(
            chip, &Chip::clicked, this, [this, appName = appName] { toggleHighlight(appName); });
        chips->addWidget(chip);
    }
    legendSection->setVisible(!colors.empty());
}

void TimelineView::toggleHighlight(const std::string& appName)
{
    highlight.before = std::exchange(
        highlight.now, highlight.now == appName ? std::nullopt : std::optional(appName));
    fade.stop();
    fade.start();
    for (int i = 0; i < chips->count(); ++i) {
        auto* chip = qobject_cast<Chip*>(chips->itemAt(i)->widget());
        chip->setChecked(highlight.now && chip->text() == toQString(*highlight.now));
    }
}

void TimelineView::exportCSV()
{
    // Made before the dialogue opens: the file shows the day as it was at the press.
    const std::string text = generateCSV(timeline);
    auto* dialog = new QFileDialog(this, "导出时间线数据");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setMimeTypeFilters({"text/csv"});
    dialog->setDefaultSuffix("csv");
    dialog->selectFile("Quillbrook-timeline.csv");
    connect(dialog, &QFileDialog::fileSelected, this,
        [text](const QString& path) { writeTextFile(path, text); });
    dialog->open();
}

void writeTextFile(const QString& path, const std::string& text)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text.data(), static_cast<qint64>(text.size()));
        file.commit();
    }
}

} // namespace quillbrook
