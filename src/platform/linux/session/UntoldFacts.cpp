#include "platform/linux/session/UntoldFacts.h"

#include "platform/MainLoop.h"
#include "platform/linux/session/IdleTime.h"
#include "platform/linux/session/SessionFront.h"
#include "platform/linux/sleep/ScreensAsleep.h"
#include "platform/linux/words/Notice.h"

#include <utility>

namespace quillbrook {

namespace {

/// By then whoever is there has told so.
constexpr double kAnswersSec = 10;

} // namespace

UntoldFacts::UntoldFacts(MainLoop& mainLoop, const SessionFront& front, const IdleTime& idle,
    const ScreensAsleep& screens)
    : mainLoop(mainLoop)
    , front(front)
    , idle(idle)
    , screens(screens)
{
    lookLater();
}

void UntoldFacts::frontSourceChanged()
{
    if (!isFrontMissed && !front.isKnown()) {
        lookLater();
    }
}

void UntoldFacts::lookLater()
{
    if (!std::exchange(isLookComing, true)) {
        mainLoop.runAfter(kAnswersSec, lifetime.whileAlive([this] {
            isLookComing = false;
            look();
        }));
    }
}

void UntoldFacts::look()
{
    if (!idle.isKnown() && !std::exchange(isIdleMissed, true)) {
        notice("此桌面没有告诉闲置时间，无法判断人是否在场，一小时后不再记录");
    }
    if (front.isKnown() || isFrontMissed) {
        return;
    }
    // A locked desktop runs no extensions, and takes its time to start them again.
    const bool wereAsleep = std::exchange(areScreensAsleep, screens.areAsleep());
    if (areScreensAsleep || wereAsleep) {
        lookLater();
        return;
    }
    isFrontMissed = true;
    notice("此桌面没有告诉前台应用，暂不记录应用的使用时间");
}

} // namespace quillbrook
