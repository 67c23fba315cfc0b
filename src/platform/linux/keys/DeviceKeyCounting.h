#pragma once

#include "base/Lifetime.h"
#include "platform/Accessibility.h"
#include "platform/KeyCounting.h"
#include "platform/linux/keys/DirectKeys.h"
#include "platform/linux/keys/KeyCounterClient.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillbrook {

/// Counts keys below the display: reads the keyboards where that is allowed, and else asks the
/// counter service. Changes from one to the other as either comes or goes.
class DeviceKeyCounting final : public KeyCounting {
public:
    /// `devices` and `seats` outlive it.
    DeviceKeyCounting(std::string folder, InputDevices& devices, const Seats& seats,
        KeyCounterClient::Surroundings surroundings);

    DeviceKeyCounting(const DeviceKeyCounting&) = delete;
    DeviceKeyCounting& operator=(const DeviceKeyCounting&) = delete;

    bool addGlobalMonitor(KeyDownHandler handler) override;
    std::unique_ptr<EventTap> createTap(KeyDownHandler handler) override;

    /// Whether one of the two ways is there.
    bool isPossible() { return isDirect || service.isPossible(); }

private:
    struct Listener;
    class Tap;

    void lookedAtKeyboards();
    void choose();
    void tell(std::uint64_t keys);

    MainLoop& mainLoop;
    std::vector<std::shared_ptr<const Listener>> monitors{};
    std::vector<std::weak_ptr<const Listener>> listeners{};
    bool isDirect = false;
    bool isChoiceComing = false;
    DirectKeys direct;
    KeyCounterClient service;

    Lifetime lifetime{};
};

/// The permission to count keys, which is that to read the keyboards or to ask the service.
class DeviceAccessibility final : public Accessibility {
public:
    explicit DeviceAccessibility(DeviceKeyCounting& keyCounting) : keyCounting(keyCounting) {}

    bool isTrusted() const override { return keyCounting.isPossible(); }
    void promptForTrust() override {}

private:
    DeviceKeyCounting& keyCounting;
};

} // namespace quillbrook
