#pragma once

#include "pages/figures/TimelineFigures.h"
#include "pages/kit/DrawnView.h"

#include <QVariantAnimation>

#include <optional>
#include <string>
#include <vector>

namespace quillbrook {

/// A day hour by hour: a line for each hour with its applications as blocks.
class TimelineChart final : public DrawnView {
    Q_OBJECT

public:
    explicit TimelineChart(QWidget* parent = nullptr);

    void setTimeline(std::vector<HourlyTimelineEntry> timeline);

    /// Lets all other applications fade; empty lets none.
    void setHighlightedApp(std::optional<std::string> appName);

    std::vector<DrawnItem> drawnItems() const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRectF rowArea(std::size_t row) const;
    QRectF blockRect(const QRectF& area, const HourBlock& block) const;
    double dim(const std::string& appName) const;
    void drawAxis(QPainter& painter, std::size_t row) const;
    void drawRow(QPainter& painter, std::size_t row, const AppColorMap& colors) const;
    void drawBlock(QPainter& painter, const QRectF& rect, const HourBlock& block) const;
    QString helpAt(QPointF point) const;

    std::vector<HourlyTimelineEntry> timeline{};
    std::optional<std::string> highlightedBefore{};
    std::optional<std::string> highlightedApp{};
    QVariantAnimation fade{}; // from the one to the other
};

} // namespace quillbrook
