#pragma once

#include "keycounter/keyboards/FileDescriptor.h"

#include <optional>
#include <string>

namespace quillbrook {

/// The seat of a machine that has one.
inline constexpr const char* kFirstSeat = "seat0";

/// What came of trying to open a device.
struct OpenedDevice {
    FileDescriptor descriptor{}; // open for a keyboard that may be read, and never waits
    bool isRefused = false; // for want of permission
};

/// The input devices of a machine.
class InputDevices {
public:
    virtual ~InputDevices() = default;

    /// Opens the device of that path if it is a keyboard.
    virtual OpenedDevice openKeyboard(const std::string& path) = 0;

    /// The seat that the device belongs to; empty while that isn't known yet.
    virtual std::optional<std::string> seatOf(const std::string& path) = 0;
};

} // namespace quillbrook
