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

int ScrollPage::fullHeight(int width) const
{
    return content->hasHeightForWidth() ? content->totalHeightForWidth(width)
                                        : content->totalSizeHint().height();
}

} // namespace quillbrook
