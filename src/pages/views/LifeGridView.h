#pragma once

#include "pages/figures/LifeFigures.h"
#include "pages/kit/MarkView.h"

#include <optional>
#include <vector>

namespace quillbrook {

class Clock;
class LifeCellView;

/// A life as a grid of years.
class LifeGridView final : public MarkView {
    Q_OBJECT

public:
    explicit LifeGridView(const Clock& clock, QWidget* parent = nullptr);

    void setCells(const std::vector<LifeCellInfo>& cells, int birthCol, int newLifeExpectancyAge);

    /// Lets the present year answer the bell.
    void setShowBellEffect(bool isOn);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeCurrentCell();

    std::optional<LifeCellInfo> currentCell{};
    int lifeExpectancyAge = 0;
    LifeCellView* overlay;
};

} // namespace quillbrook
