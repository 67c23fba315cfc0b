#include "shell/SplitView.h"

#include "shell/Sidebar.h"

#include <algorithm>

namespace quillbrook {

namespace {

/// Takes the mouse where the two columns meet. What is to be seen there is the sidebar's edge.
class ClearHandle final : public QSplitterHandle {
public:
    using QSplitterHandle::QSplitterHandle;

protected:
    void paintEvent(QPaintEvent*) override {}
};

} // namespace

SplitView::SplitView(Sidebar* sidebar, QWidget* page, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , page(page)
{
    setChildrenCollapsible(false);
    setHandleWidth(0); // the page begins at the edge
    page->setMinimumWidth(kPageMinimum);
    addWidget(sidebar);
    addWidget(page);
    setStretchFactor(1, 1);
    sidebar->lower(); // to be the first for screen readers; the splitter turns the order around
    setSizes({Sidebar::kIdealWidth, Sidebar::kIdealWidth * 4});
}

QSplitterHandle* SplitView::createHandle()
{
    return new ClearHandle(orientation(), this);
}

void SplitView::resizeEvent(QResizeEvent* event)
{
    const int rest = width() - Sidebar::kMinimumWidth - handleWidth();
    page->setMinimumWidth(std::clamp(rest, 0, kPageMinimum));
    QSplitter::resizeEvent(event);
}

} // namespace quillbrook
