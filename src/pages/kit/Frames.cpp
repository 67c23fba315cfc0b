#include "pages/kit/Frames.h"

#include <QEvent>
#include <QWidget>

#include <chrono>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::chrono::milliseconds kInterval(33);

} // namespace

Frames::Frames(QWidget* widget, std::function<bool()> isMoving)
    : QObject(widget)
    , widget(widget)
    , isMoving(std::move(isMoving))
{
    widget->installEventFilter(this);
    timer.setInterval(kInterval);
    connect(&timer, &QTimer::timeout, this, [this] {
        this->widget->update();
        if (!this->isMoving()) {
            timer.stop();
        }
    });
}

void Frames::begin()
{
    widget->update();
    if (widget->isVisible() && isMoving()) {
        timer.start();
    }
}

bool Frames::eventFilter(QObject* watched, QEvent* event)
{
    // A window that is minimized hides its widgets as far as these events go.
    if (event->type() == QEvent::Show) {
        begin();
    } else if (event->type() == QEvent::Hide) {
        timer.stop();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quillbrook
