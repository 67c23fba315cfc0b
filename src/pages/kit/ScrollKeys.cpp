#include "pages/kit/ScrollKeys.h"

#include <QAbstractScrollArea>
#include <QScrollBar>

#include <optional>

namespace quillbrook {

namespace {

struct Scroll {
    Qt::Orientation orientation;
    QAbstractSlider::SliderAction action;
};

std::optional<Scroll> scrollFor(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return Scroll{Qt::Vertical, QAbstractSlider::SliderSingleStepSub};
    case Qt::Key_Down:
        return Scroll{Qt::Vertical, QAbstractSlider::SliderSingleStepAdd};
    case Qt::Key_PageUp:
        return Scroll{Qt::Vertical, QAbstractSlider::SliderPageStepSub};
    case Qt::Key_PageDown:
        return Scroll{Qt::Vertical, QAbstractSlider::SliderPageStepAdd};
    case Qt::Key_Home:
        return Scroll{Qt::Vertical, QAbstractSlider::SliderToMinimum};
    case Qt::Key_End:
        return Scroll{Qt::Vertical, QAbstractSlider::SliderToMaximum};
    case Qt::Key_Left:
        return Scroll{Qt::Horizontal, QAbstractSlider::SliderSingleStepSub};
    case Qt::Key_Right:
        return Scroll{Qt::Horizontal, QAbstractSlider::SliderSingleStepAdd};
    default:
        return std::nullopt;
    }
}

} // namespace

bool scrollByKey(QAbstractScrollArea& area, int key)
{
    const auto scroll = scrollFor(key);
    if (!scroll) {
        return false;
    }
    QScrollBar& bar = scroll->orientation == Qt::Vertical ? *area.verticalScrollBar()
                                                          : *area.horizontalScrollBar();
    if (bar.maximum() <= bar.minimum()) {
        return false;
    }
    bar.triggerAction(scroll->action);
    return true;
}

} // namespace quillbrook
