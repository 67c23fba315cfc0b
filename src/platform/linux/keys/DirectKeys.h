#pragma once

#include "keycounter/keyboards/Keyboards.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <string>

namespace quillbrook {

class InputDevices;
class Seats;

/// The keyboards of the machine, read by our own process where it may. Keys that another user types
/// at them don't count. Main thread only.
class DirectKeys {
public:
    /// `counted` gets the keys that went down; `looked` runs when keyboards may have come or gone.
    /// `devices` and `seats` outlive it.
    DirectKeys(std::string folder, InputDevices& devices, const Seats& seats,
        std::function<void(std::uint64_t)> counted, std::function<void()> looked);

    DirectKeys(const DirectKeys&) = delete;
    DirectKeys& operator=(const DirectKeys&) = delete;

    /// Whether there are keyboards and all of them may be read: less would count too little.
    bool arePossible() const { return keyboards.areAllReadable(); }

private:
    void read();
    bool areOurs(const std::string& seat) const;

    const Seats& seats;
    std::function<void(std::uint64_t)> counted;
    std::function<void()> looked;
    Keyboards keyboards;
    QSocketNotifier notifier;
};

} // namespace quillbrook
