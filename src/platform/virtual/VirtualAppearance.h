#pragma once

#include "platform/DesktopAppearance.h"

#include <utility>

namespace quillbrook {

/// A desktop that wishes for no look until it is told to.
class VirtualAppearance final : public DesktopAppearance {
public:
    Subscription observe(std::function<void(const Appearance&)> changed) override
    {
        changed(wish.get());
        return wish.observe(std::move(changed));
    }

    void whenKnown(std::function<void()> body) override { body(); }

    void setWish(const Appearance& newWish) { wish.set(newWish); }

    bool canBlendWindows() const override { return canBlend; }
    void setCanBlendWindows(bool isSo) { canBlend = isSo; }

private:
    bool canBlend = true;
    Property<Appearance> wish{};
};

} // namespace quillbrook
