#pragma once

#include "platform/Accessibility.h"
#include "platform/KeyCounting.h"
#include "platform/linux/x11/ModifierKeys.h"

#include <cstdint>
#include <vector>

namespace quillbrook {

class X11Connection;

/// Counts keys on an X11 display: the monitor by raw key presses of XInput 2.1, which come also
/// while another program holds the keyboard, the tap by the RECORD extension. Auto-repeat counts
/// only in the tap.
class X11KeyCounting final : public KeyCounting {
public:
    explicit X11KeyCounting(X11Connection& x11);

    bool addGlobalMonitor(KeyDownHandler handler) override;
    std::unique_ptr<EventTap> createTap(KeyDownHandler handler) override;

    /// Whether one of the two ways is there.
    bool isPossible() const;

private:
    void handle(const xcb_generic_event_t& event) const;

    X11Connection& x11;
    ModifierKeys modifiers;
    bool isOfSession; // and not of a part of its programs
    std::uint8_t inputOpcode; // of XInput 2.1 or later, else 0
    bool hasRecord;
    std::vector<KeyDownHandler> monitors{};
};

/// The permission to count keys, which on X11 nobody has to give.
class X11Accessibility final : public Accessibility {
public:
    explicit X11Accessibility(const X11KeyCounting& keyCounting) : keyCounting(keyCounting) {}

    bool isTrusted() const override { return keyCounting.isPossible(); }
    void promptForTrust() override {}

private:
    const X11KeyCounting& keyCounting;
};

} // namespace quillbrook
