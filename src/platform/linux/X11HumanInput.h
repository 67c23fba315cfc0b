#pragma once

#include "platform/HumanInput.h"

namespace quillbrook {

class X11Connection;

/// What the X server's screen-saver extension knows of the last input.
class X11HumanInput final : public HumanInput {
public:
    explicit X11HumanInput(X11Connection& x11);

    /// 0 when nobody can tell: then only locking and sleeping end a session.
    double secondsSinceLastInput() const override;

private:
    X11Connection& x11;
    bool isKnown;
};

} // namespace quillbrook
