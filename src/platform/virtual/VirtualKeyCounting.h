#pragma once

#include "platform/KeyCounting.h"
#include "platform/virtual/OutsideCalls.h"

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace quillbrook {

/// A keyboard on which keys are pressed by hand, and a system that gives monitors and taps or
/// refuses them as told.
class VirtualKeyCounting final : public KeyCounting {
public:
    explicit VirtualKeyCounting(OutsideCalls& calls) : calls(calls) {}

    bool addGlobalMonitor(KeyDownHandler handler) override;
    std::unique_ptr<EventTap> createTap(KeyDownHandler handler) override;

    void setGivesMonitors(bool gives) { givesMonitors = gives; }
    void setGivesTaps(bool gives) { givesTaps = gives; }

    /// Runs `body` each time a tap was refused, before the refusal is known.
    void onTapRefused(std::function<void()> body) { tapRefused = std::move(body); }

    /// Presses `count` keys, to all monitors and enabled taps.
    void press(std::int64_t count) const;

    /// Forgets all monitors, as the end of the process does.
    void clear() { monitors.clear(); }

private:
    class Tap;

    OutsideCalls& calls;
    bool givesMonitors = true;
    bool givesTaps = true;
    std::function<void()> tapRefused = [] {};
    std::vector<KeyDownHandler> monitors{};
    std::vector<Tap*> taps{}; // each takes itself out when it ends
};

} // namespace quillbrook
