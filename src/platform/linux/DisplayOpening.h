#pragma once

#include "platform/linux/words/HeldErrors.h"

#include <QtGlobal>

namespace quillbrook {

/// As long as one lives, a toolkit that finds no display to open ends the program with one notice
/// and status 1, where it would abort; what it and its libraries say on the way to a display is
/// told afterwards. Around the making of the application object; one at a time.
class DisplayOpening {
public:
    DisplayOpening();
    ~DisplayOpening();

    DisplayOpening(const DisplayOpening&) = delete;
    DisplayOpening& operator=(const DisplayOpening&) = delete;

private:
    QtMessageHandler handlerBefore;
    HeldErrors errors{};
};

} // namespace quillbrook
