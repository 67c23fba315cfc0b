#pragma once

#include "base/Lifetime.h"
#include "pages/figures/LifeFigures.h"
#include "pages/views/Page.h"

namespace quillbrook {

class CardRow;
class LifeGridSection;
class MarkView;
class MonkBellButton;

/// The Future page: a life as a grid of years, how far it and the year are, a clock and a bell. It
/// needs no data.
class iLifeView final : public Page {
    Q_OBJECT

public:
    explicit iLifeView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData&) override {}

    void playBellSound();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refreshCache();
    void setBirthYear(int year);
    void setShowBellEffect(bool isOn);

    const Platform& platform;
    int birthYear;
    int currentYear; // stays while the page is open
    int monkAnimationCount = 0;
    MonkBellButton* bell;
    CardRow* cards;
    MarkView* progress;
    LifeGridSection* grid;
    Lifetime lifetime{};
};

} // namespace quillbrook
