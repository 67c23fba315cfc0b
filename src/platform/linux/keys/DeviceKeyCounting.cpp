#include "platform/linux/keys/DeviceKeyCounting.h"

#include "platform/MainLoop.h"

#include <utility>

namespace quillbrook {

namespace {

constexpr double kSettleSec = 1;

} // namespace

/// Who is told of keys.
struct DeviceKeyCounting::Listener {
    KeyDownHandler handler;
    bool isOn = true;
};

class DeviceKeyCounting::Tap final : public EventTap {
public:
    explicit Tap(std::shared_ptr<Listener> listener) : listener(std::move(listener)) {}

    void enable(bool isOn) override { listener->isOn = isOn; }

private:
    std::shared_ptr<Listener> listener;
};

DeviceKeyCounting::DeviceKeyCounting(std::string folder, InputDevices& devices, const Seats& seats,
    KeyCounterClient::Surroundings surroundings)
    : mainLoop(surroundings.mainLoop)
    , direct(
          std::move(folder), devices, seats,
          [this](std::uint64_t keys) {
              if (isDirect) {
                  tell(keys);
              }
          },
          [this] { lookedAtKeyboards(); })
    , service(std::move(surroundings), [this](std::uint32_t keys) {
        if (!isDirect) {
            tell(keys);
        }
    })
{
    choose();
}

void DeviceKeyCounting::lookedAtKeyboards()
{
    // A keyboard that was just plugged in may not be read for a moment.
    if (direct.arePossible() != isDirect && !std::exchange(isChoiceComing, true)) {
        mainLoop.runAfter(kSettleSec, lifetime.whileAlive([this] {
            isChoiceComing = false;
            choose();
        }));
    }
}

void DeviceKeyCounting::choose()
{
    isDirect = direct.arePossible();
    service.setWanted(!isDirect);
}

bool DeviceKeyCounting::addGlobalMonitor(KeyDownHandler handler)
{
    if (!isPossible()) {
        return false;
    }
    monitors.push_back(std::make_shared<const Listener>(Listener{.handler = std::move(handler)}));
    listeners.emplace_back(monitors.back());
    return true;
}

std::unique_ptr<EventTap> DeviceKeyCounting::createTap(KeyDownHandler handler)
{
    if (!isPossible()) {
        return nullptr;
    }
    const auto listener
        = std::make_shared<Listener>(Listener{.handler = std::move(handler), .isOn = false});
    listeners.emplace_back(listener);
    return std::make_unique<Tap>(listener);
}

void DeviceKeyCounting::tell(std::uint64_t keys)
{
    std::erase_if(listeners, [](const auto& listener) { return listener.expired(); });
    const auto present = listeners; // a handler may add to them
    for (const auto& weak : present) {
        const auto listener = weak.lock();
        for (std::uint64_t key = 0; listener && listener->isOn && key < keys; ++key) {
            listener->handler();
        }
    }
}

} // namespace quillbrook
