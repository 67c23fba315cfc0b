#pragma once

#include "base/Lifetime.h"
#include "pages/figures/FlipClockMarks.h"
#include "pages/kit/Spoken.h"

#include <QList>
#include <QWidget>

namespace quillbrook {

class FlipDigitView;
struct Platform;

/// A clock of tiles that shows the local time to the second. It wakes up once a second, and only
/// while it is on screen.
class FlipClockContainer final : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit FlipClockContainer(const Platform& platform, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    ClockItems items() const;
    void showTime();
    void waitForNextSecond();

    const Platform& platform;
    QList<FlipDigitView*> tiles{}; // by their place; none for a separator
    bool isOnScreen = false;
    bool isWaiting = false;
    Lifetime lifetime{};
};

} // namespace quillbrook
