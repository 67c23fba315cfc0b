#pragma once

#include "platform/DesktopExtension.h"

#include <functional>
#include <utility>

namespace quillbrook {

/// A desktop's extension in whatever state a test wants, at first one that isn't needed.
class VirtualDesktopExtension final : public DesktopExtension {
public:
    State state() const override { return present; }
    void enable() override
    {
        if (present == State::off) {
            setState(State::on);
        }
    }
    void whenChanged(std::function<void()> body) override { changed = std::move(body); }

    void setState(State next)
    {
        present = next;
        changed();
    }

private:
    State present = State::notNeeded;
    std::function<void()> changed = [] {};
};

} // namespace quillbrook
