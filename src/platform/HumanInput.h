#pragma once

namespace quillbrook {

/// The traces that a person's hands leave on the machine. Main thread only.
class HumanInput {
public:
    virtual ~HumanInput() = default;

    /// Seconds since the last key, click or movement, at least 0. macOS:
    /// `CGEventSourceSecondsSinceLastEventType` of the HID system state and the null event; Linux:
    /// the X server's screen-saver extension.
    virtual double secondsSinceLastInput() const = 0;
};

} // namespace quillbrook
