#include "platform/linux/LinuxKeys.h"

#include <chrono>

namespace quillbrook {

namespace {

constexpr const char* kDeviceFolder = "/dev/input";

double steadySeconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

} // namespace

LinuxKeys::LinuxKeys(X11Connection& x11, Bus& systemBus, MainLoop& mainLoop) : display(x11)
{
    if (display.isPossible()) {
        return;
    }
    below.emplace(kDeviceFolder, devices, seats,
        KeyCounterClient::Surroundings{
            .systemBus = systemBus, .mainLoop = mainLoop, .now = steadySeconds});
    belowAccess.emplace(*below);
}

KeyCounting& LinuxKeys::counting()
{
    return below ? static_cast<KeyCounting&>(*below) : display;
}

Accessibility& LinuxKeys::accessibility()
{
    return belowAccess ? static_cast<Accessibility&>(*belowAccess) : displayAccess;
}

} // namespace quillbrook
