#pragma once

#include "platform/HumanInput.h"

#include <cstdint>

namespace quillbrook {

class X11Connection;

/// What the X server knows of the last input, by its screen-saver extension, or where that is
/// missing, by its counter of idle time.
class X11HumanInput final : public HumanInput {
public:
    explicit X11HumanInput(X11Connection& x11);

    /// 0 when nobody can tell: then only locking and sleeping end a session.
    double secondsSinceLastInput() const override;

private:
    double secondsOfSaver() const;
    double secondsOfCounter() const;

    X11Connection& x11;
    bool hasSaver;
    std::uint32_t idleCounter; // 0 when it isn't needed, or missing too
};

} // namespace quillbrook
