#pragma once

#include "base/Lifetime.h"

namespace quillbrook {

class IdleTime;
class MainLoop;
class ScreensAsleep;
class SessionFront;

/// Says once of each thing that a desktop has to tell that it doesn't: some seconds after the
/// start, or after whoever told it has gone without another. Main thread only.
class UntoldFacts {
public:
    /// All of them outlive it.
    UntoldFacts(MainLoop& mainLoop, const SessionFront& front, const IdleTime& idle,
        const ScreensAsleep& screens);

    UntoldFacts(const UntoldFacts&) = delete;
    UntoldFacts& operator=(const UntoldFacts&) = delete;

    /// To be called when another, or nobody, may know what is in front.
    void frontSourceChanged();

private:
    void lookLater();
    void look();

    MainLoop& mainLoop;
    const SessionFront& front;
    const IdleTime& idle;
    const ScreensAsleep& screens;
    bool isLookComing = false;
    bool isFrontMissed = false; // and that was said
    bool isIdleMissed = false;
    bool areScreensAsleep = false; // at the last look

    Lifetime lifetime{};
};

} // namespace quillbrook
