#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

namespace quillbrook {

/// Repaints a widget while something on it moves, and only while it is on screen. Main thread only.
class Frames final : public QObject {
    Q_OBJECT

public:
    /// `isMoving` is asked after each frame. The widget owns this.
    Frames(QWidget* widget, std::function<bool()> isMoving);

    /// Something on the widget has begun to move.
    void begin();

    bool areRunning() const { return timer.isActive(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* widget;
    std::function<bool()> isMoving;
    QTimer timer{};
};

} // namespace quillbrook
