#include "platform/virtual/VirtualKeyCounting.h"

#include <utility>

namespace quillbrook {

class VirtualKeyCounting::Tap final : public EventTap {
public:
    Tap(VirtualKeyCounting& keyboard, KeyDownHandler handler)
        : keyboard(keyboard)
        , handler(std::move(handler))
    {
        keyboard.taps.push_back(this);
    }
    ~Tap() override { std::erase(keyboard.taps, this); }

    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

    void enable(bool isOn) override
    {
        isEnabled = isOn;
        keyboard.calls.add(TapEnableCall{isOn});
    }

    void keyDown() const
    {
        if (isEnabled) {
            handler();
        }
    }

private:
    VirtualKeyCounting& keyboard;
    KeyDownHandler handler;
    bool isEnabled = false;
};

bool VirtualKeyCounting::addGlobalMonitor(KeyDownHandler handler)
{
    if (givesMonitors) {
        monitors.push_back(std::move(handler));
    }
    return givesMonitors;
}

std::unique_ptr<EventTap> VirtualKeyCounting::createTap(KeyDownHandler handler)
{
    if (!givesTaps) {
        tapRefused();
        return nullptr;
    }
    return std::make_unique<Tap>(*this, std::move(handler));
}

void VirtualKeyCounting::press(std::int64_t count) const
{
    for (std::int64_t i = 0; i < count; ++i) {
        for (const KeyDownHandler& monitor : monitors) {
            monitor();
        }
        for (const Tap* tap : taps) {
            tap->keyDown();
        }
    }
}

} // namespace quillbrook
