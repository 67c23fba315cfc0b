#include "pages/views/LifeGridView.h"

#include "pages/figures/LifeGridMarks.h"
#include "pages/kit/Convert.h"
#include "pages/motion/LifeCellView.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr int kMinimumWidth = 460; // leaves a cell room for two large digits

} // namespace

LifeGridView::LifeGridView(const Clock& clock, QWidget* parent)
    : MarkView("生命进度", parent)
    , overlay(new LifeCellView(clock, this))
{
    setPictureHeight(static_cast<int>(lifeGridHeight()), kMinimumWidth);
    overlay->hide();
}

void LifeGridView::setCells(
    const std::vector<LifeCellInfo>& cells, int birthCol, int newLifeExpectancyAge)
{
    const auto current = std::find_if(
        cells.begin(), cells.end(), [](const LifeCellInfo& cell) { return cell.isCurrent; });
    currentCell = current == cells.end() ? std::nullopt : std::optional(*current);
    lifeExpectancyAge = newLifeExpectancyAge;
    setPicture([cells, birthCol, newLifeExpectancyAge](Size size, const TextWidth&) {
        return lifeGridMarks(cells, birthCol, newLifeExpectancyAge, size.width);
    });
    placeCurrentCell();
}

void LifeGridView::setShowBellEffect(bool isOn)
{
    overlay->setShowBellEffect(isOn);
}

void LifeGridView::resizeEvent(QResizeEvent* event)
{
    MarkView::resizeEvent(event);
    placeCurrentCell();
}

void LifeGridView::placeCurrentCell()
{
    overlay->setVisible(currentCell.has_value());
    if (currentCell) {
        overlay->setCell(
            *currentCell, toQRectF(lifeCellRect(currentCell->id, width())), lifeExpectancyAge);
    }
}

} // namespace quillbrook
