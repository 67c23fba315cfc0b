#pragma once

#include "platform/KeyCounting.h"

#include <xcb/record.h>
#include <xcb/xcb.h>

#include <memory>

class QSocketNotifier;

namespace quillbrook {

class ModifierKeys;
class X11Connection;

/// A tap on all clients' key presses by the RECORD extension. The events come on a connection of
/// their own, which does nothing else.
class RecordTap final : public EventTap {
public:
    /// Empty when the server refuses. `x11` and `modifiers` outlive the tap.
    static std::unique_ptr<RecordTap> create(
        X11Connection& x11, const ModifierKeys& modifiers, KeyCounting::KeyDownHandler handler);

    ~RecordTap() override;

    RecordTap(const RecordTap&) = delete;
    RecordTap& operator=(const RecordTap&) = delete;

    void enable(bool isOn) override;

private:
    RecordTap(X11Connection& x11, const ModifierKeys& modifiers,
        KeyCounting::KeyDownHandler handler, xcb_connection_t* events,
        xcb_record_context_t context);

    void drain();
    void count(const xcb_record_enable_context_reply_t& reply) const;

    X11Connection& x11;
    const ModifierKeys& modifiers;
    KeyCounting::KeyDownHandler handler;
    xcb_connection_t* events;
    xcb_record_context_t context;
    unsigned sequence = 0; // of the request that enabled; 0 while disabled
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace quillbrook
