#include "pages/kit/ScrollPage.h"

#include "pages/kit/ScrollKeys.h"

#include <QKeyEvent>
#include <QVBoxLayout>

namespace quillbrook {

ScrollPage::ScrollPage(Spacing spacing, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* inside = new QWidget;
    content = new QVBoxLayout(inside);
    content->setContentsMargins(spacing.around, spacing.around, spacing.around, spacing.around);
    content->setSpacing(spacing.between);
    setWidget(inside);
}

void ScrollPage::keyPressEvent(QKeyEvent* event)
{
    if (!scrollByKey(*this, event->key())) {
        event->ignore();
    }
}

} // namespace quillbrook
