#pragma once

#include "keycounter/keyboards/EvdevDevices.h"
#include "keycounter/keyboards/LoginSeats.h"
#include "platform/linux/keys/DeviceKeyCounting.h"
#include "platform/linux/x11/X11KeyCounting.h"

#include <optional>

namespace quillbrook {

class Bus;
class MainLoop;
class X11Connection;

/// The keys of the session: as its display tells them, else from the keyboards themselves or from
/// the service that reads them. Main thread only.
class LinuxKeys {
public:
    LinuxKeys(X11Connection& x11, Bus& systemBus, MainLoop& mainLoop);

    KeyCounting& counting();
    Accessibility& accessibility();

private:
    X11KeyCounting display;
    X11Accessibility displayAccess{display};
    EvdevDevices devices{};
    LoginSeats seats{};
    std::optional<DeviceKeyCounting> below{}; // where the display tells none
    std::optional<DeviceAccessibility> belowAccess{};
};

} // namespace quillbrook
