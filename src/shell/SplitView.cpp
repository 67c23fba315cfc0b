#include "shell/SplitView.h"

#include "shell/Sidebar.h"

#include <algorithm>

namespace quillbrook {

SplitView::SplitView(Sidebar* sidebar, QWidget* page, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , page(page)
{
    setChildrenCollapsible(false);
    setHandleWidth(1);
    page->setMinimumWidth(kPageMinimum);
    addWidget(sidebar);
    addWidget(page);
    setStretchFactor(1, 1);
    sidebar->lower(); // to be the first for screen readers; the splitter turns the order around
    setSizes({Sidebar::kIdealWidth, Sidebar::kIdealWidth * 4});
}

void SplitView::resizeEvent(QResizeEvent* event)
{
    const int rest = width() - Sidebar::kMinimumWidth - handleWidth();
    page->setMinimumWidth(std::clamp(rest, 0, kPageMinimum));
    QSplitter::resizeEvent(event);
}

} // namespace quillbrook
