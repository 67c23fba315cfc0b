#pragma once

#include "keycounter/keyboards/InputDevices.h"

namespace quillbrook {

/// The kernel's event devices. A keyboard is what has a letter, a virtual one too. One that another
/// program holds for itself gives us nothing, and counts again once it is let go; the keys that
/// such a program hands on come from a virtual one.
class EvdevDevices final : public InputDevices {
public:
    OpenedDevice openKeyboard(const std::string& path) override;
    std::optional<std::string> seatOf(const std::string& path) override;
};

} // namespace quillbrook
