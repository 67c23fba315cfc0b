#pragma once

#include "pages/figures/LocalCalendar.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/TimeZone.h"

namespace quillbrook {

/// The computer's calendar as it stands now. The platform outlives it.
inline LocalCalendar computerCalendar(const Platform& platform)
{
    return {.now = platform.clock.now(), .secondsFromUtc = [&zone = platform.timeZone](double at) {
                return zone.secondsFromUtc(at);
            }};
}

} // namespace quillbrook
