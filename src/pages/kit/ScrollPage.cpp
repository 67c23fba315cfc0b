#include "pages/kit/ScrollPage.h"

#include <QVBoxLayout>

namespace quillbrook {

ScrollPage::ScrollPage(Spacing spacing, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* inside = new QWidget;
    content = new QVBoxLayout(inside);
    content->setContentsMargins(spacing.around, spacing.around, spacing.around, spacing.around);
    content->setSpacing(spacing.between);
    setWidget(inside);
}

} // namespace quillbrook
