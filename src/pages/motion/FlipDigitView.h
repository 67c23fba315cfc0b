#pragma once

#include "base/Lifetime.h"

#include <QWidget>

namespace quillbrook {

class Frames;
struct Platform;

/// A tile of the clock. A digit that changes is swapped at the darkest moment of a short fade.
class FlipDigitView final : public QWidget {
    Q_OBJECT

public:
    FlipDigitView(const Platform& platform, int digit, QWidget* parent);

    void setDigit(int newDigit);

    /// What is drawn at the moment.
    int displayedDigit() const { return displayed; }

    /// How clearly, from 0.5 while the digit changes to 1.
    double opacity() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fade(bool isChanging);

    const Platform& platform;
    int digit;
    int displayed;
    bool opacityChange = false;
    double fadeFrom = 1;
    double fadeBegan = 0; // seconds since 1970
    Frames* frames;
    Lifetime lifetime{};
};

} // namespace quillbrook
