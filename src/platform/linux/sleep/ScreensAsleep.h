#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <utility>

namespace quillbrook {

/// Who tells that the screens are dark, covered or locked.
enum class ScreenSource : std::uint8_t {
    serverSaver,
    powerManagement,
    desktopSaver,
    sessionLock,
    xscreensaver,
    displayLocker,
    compositorOutputs,
    desktopPower,
};

/// The screens sleep as long as one of the sources says so.
class ScreensAsleep {
public:
    /// `changed` runs when the screens fall asleep (true) and when they wake (false).
    explicit ScreensAsleep(std::function<void(bool)> changed) : changed(std::move(changed)) {}

    void set(ScreenSource source, bool isAsleep)
    {
        const bool wasAsleep = areAsleep();
        if (isAsleep) {
            sources.insert(source);
        } else {
            sources.erase(source);
        }
        if (wasAsleep != areAsleep()) {
            changed(areAsleep());
        }
    }

    bool areAsleep() const { return !sources.empty(); }

    /// What `source` calls with what it says, while this lives.
    std::function<void(bool)> teller(ScreenSource source)
    {
        return [this, source](bool isAsleep) { set(source, isAsleep); };
    }

private:
    std::function<void(bool)> changed;
    std::set<ScreenSource> sources{};
};

} // namespace quillbrook
