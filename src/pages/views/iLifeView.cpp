#include "pages/views/iLifeView.h"

#include "pages/figures/YearProgressMarks.h"
#include "pages/kit/CardRow.h"
#include "pages/kit/FlowLayout.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/Panel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/motion/FlipClockContainer.h"
#include "pages/motion/MonkBellButton.h"
#include "pages/views/BellSound.h"
#include "pages/views/LifeGridSection.h"
#include "platform/Clock.h"
#include "platform/MainLoop.h"
#include "platform/Platform.h"
#include "platform/TimeZone.h"
#include "platform/UserDefaults.h"

#include <QLabel>
#include <QVBoxLayout>

#include <cmath>

namespace quillbrook {

namespace {

constexpr std::string_view kBirthYearKey = "birthYear";
constexpr int kSidePadding = 24;
constexpr int kEdgePadding = 16;
constexpr int kSpacing = 20;
constexpr int kTitleSpacing = 8; // all of the row stands side by side in a new window
constexpr int kQuotePixels = 16;
constexpr int kQuotePadding = 20;
constexpr double kBellSec = 0.5;
constexpr CardRowForm kCards{.spacing = 16, .shrinking = {.value = 0.6, .title = 0.6}};

LifeMoment momentOf(const Platform& platform)
{
    const double now = platform.clock.now();
    return lifeMoment(now, platform.timeZone.secondsFromUtc(now));
}

/// Side by side, or below each other where the page is narrow.
QWidget* titleRow(QWidget* bell, QWidget* clock)
{
    auto* title = new QWidget;
    auto* row = new FlowLayout(kTitleSpacing, FlowLayout::Rows::centered, title);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new PageTitle("The Future Is a Mystery", PageTitle::Design::system));
    row->addWidget(bell);
    row->addWidget(clock);
    return title;
}

QWidget* panelAround(QWidget* content)
{
    auto* panel = new Panel;
    auto* inside = new QVBoxLayout(panel);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(content);
    return panel;
}

QLabel* quote()
{
    QLabel* label = secondaryLabel(
        "过去心不可得，现在心不可得，未来心不可得", Look::systemFont(kQuotePixels, QFont::Medium));
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->setContentsMargins(kQuotePadding, kQuotePadding, kQuotePadding, kQuotePadding);
    return label;
}

} // namespace

iLifeView::iLifeView(const PageTools& tools, QWidget* parent)
    : Page({.around = 0, .between = kSpacing}, parent)
    , platform(tools.platform)
    , birthYear(birthYearOf(platform.userDefaults.integerForKey(kBirthYearKey)))
    , currentYear(momentOf(platform).currentYear)
    , bell(new MonkBellButton(platform.clock))
    , cards(new CardRow(4, kCards))
    , progress(new MarkView("当年进度"))
    , grid(new LifeGridSection(platform.clock))
{
    column()->setContentsMargins(kSidePadding, kEdgePadding, kSidePadding, kEdgePadding);
    column()->addWidget(titleRow(bell, new FlipClockContainer(platform)));
    column()->addWidget(cards);
    column()->addWidget(panelAround(progress));
    column()->addWidget(grid);
    column()->addWidget(quote());
    column()->addStretch();
    progress->setPictureHeight(static_cast<int>(std::ceil(yearProgressHeight())));
    connect(bell, &MonkBellButton::clicked, this, &iLifeView::playBellSound);
    connect(grid, &LifeGridSection::birthYearPicked, this, &iLifeView::setBirthYear);
}

void iLifeView::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    if (!event->spontaneous()) {
        refreshCache();
    }
}

void iLifeView::refreshCache()
{
    const LifeMoment now{currentYear, momentOf(platform).localSeconds};
    grid->setLife(birthYear, lifeAge(currentYear, birthYear));
    cards->setFigures(lifeCards(birthYear, now));
    progress->setPicture([now](Size size, const TextWidth& textWidth) {
        return yearProgressMarks(now, size.width, textWidth);
    });
}

void iLifeView::setBirthYear(int year)
{
    birthYear = year;
    platform.userDefaults.setInteger(kBirthYearKey, birthYear);
    refreshCache();
}

void iLifeView::playBellSound()
{
    setShowBellEffect(true);
    bell->setMonkAnimationCount(++monkAnimationCount);
    ringBell(platform.systemSound);
    platform.mainLoop.runAfter(kBellSec, lifetime.whileAlive([this] { setShowBellEffect(false); }));
}

void iLifeView::setShowBellEffect(bool isOn)
{
    bell->setShowBellEffect(isOn);
    grid->setShowBellEffect(isOn);
}

} // namespace quillbrook
