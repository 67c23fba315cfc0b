#include "pages/kit/ScrollPage.h"

#include "pages/kit/ScrollKeys.h"

#include <QApplication>
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
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* before, QWidget* next) {
        if (before != nullptr) { // else the window comes back, and stays as it is scrolled
            followFocus(next);
        }
    });
}

/// A widget that the Tab key leads to comes into view, also from outside of the page, for which Qt
/// doesn't care. The pointer only reaches what is in view.
void ScrollPage::followFocus(QWidget* next)
{
    if (next != nullptr && widget() != nullptr && widget()->isAncestorOf(next)
        && next->window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        ensureWidgetVisible(next);
    }
}

void ScrollPage::keyPressEvent(QKeyEvent* event)
{
    if (!scrollByKey(*this, event->key())) {
        event->ignore();
    }
}

} // namespace quillbrook
