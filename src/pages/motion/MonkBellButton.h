#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

class Clock;
class Frames;

/// A monk with a drum, to be struck.
class MonkBellButton final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    explicit MonkBellButton(const Clock& clock, QWidget* parent = nullptr);

    /// Holds the drum down while it is on.
    void setShowBellEffect(bool isOn);

    /// Lets the monk start at each new count.
    void setMonkAnimationCount(int newCount);

    double drumScale() const;
    double monkScale() const;

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Clock& clock;
    bool showBellEffect = false;
    int monkAnimationCount = 0;
    double drumFrom = 1;
    double drumMovedAt = 0; // seconds since 1970
    double monkMovedAt = 0;
    Frames* frames;
};

} // namespace quillbrook
