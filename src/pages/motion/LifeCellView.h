#pragma once

#include "pages/figures/LifeFigures.h"
#include "pages/figures/Motion.h"

#include <QRectF>
#include <QWidget>

namespace quillbrook {

class Clock;
class Frames;

/// The cell of the present year, over the grid that it belongs to: it glows, and swells while the
/// bell sounds, without the grid being painted anew. Whoever reads the grid finds the cell there.
class LifeCellView final : public QWidget {
    Q_OBJECT

public:
    LifeCellView(const Clock& clock, QWidget* grid);

    /// Lays it over `rect` of the grid.
    void setCell(const LifeCellInfo& newInfo, const QRectF& rect, int newLifeExpectancyAge);

    void setShowBellEffect(bool isOn);

    /// How far the cell has swollen, from 0 to 1.
    double level() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Clock& clock;
    LifeCellInfo info{};
    QRectF cell{}; // in this widget
    int lifeExpectancyAge = 0;
    bool showBellEffect = false;
    Swing swing{};
    Frames* frames;
};

} // namespace quillbrook
