#include "platform/linux/x11/RecordTap.h"

#include "platform/linux/x11/ModifierKeys.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/xcbext.h>

#include <QSocketNotifier>

#include <cstdint>
#include <span>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::uint8_t kFromServer = 0; // the category of replies that hold events
constexpr std::size_t kEventBytes = 32;

} // namespace

std::unique_ptr<RecordTap> RecordTap::create(
    X11Connection& x11, const ModifierKeys& modifiers, KeyCounting::KeyDownHandler handler)
{
    xcb_connection_t* events = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(events) != 0) {
        xcb_disconnect(events);
        return nullptr;
    }
    const xcb_record_context_t context = xcb_generate_id(x11.get());
    const xcb_record_client_spec_t clients = XCB_RECORD_CS_ALL_CLIENTS;
    xcb_record_range_t range{};
    range.device_events = {XCB_KEY_PRESS, XCB_KEY_PRESS};
    const auto cookie
        = xcb_record_create_context_checked(x11.get(), context, 0, 1, 1, &clients, &range);
    const XcbReply<xcb_generic_error_t> failure(xcb_request_check(x11.get(), cookie));
    x11.drain();
    if (failure) {
        xcb_disconnect(events);
        return nullptr;
    }
    return std::unique_ptr<RecordTap>(
        new RecordTap(x11, modifiers, std::move(handler), events, context));
}

RecordTap::RecordTap(X11Connection& x11, const ModifierKeys& modifiers,
    KeyCounting::KeyDownHandler handler, xcb_connection_t* events, xcb_record_context_t context)
    : x11(x11)
    , modifiers(modifiers)
    , handler(std::move(handler))
    , events(events)
    , context(context)
    , notifier(
          std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(events), QSocketNotifier::Read))
{
    QObject::connect(
        notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { drain(); });
}

RecordTap::~RecordTap()
{
    enable(false);
    if (x11.isUsable()) {
        xcb_record_free_context(x11.get(), context);
        xcb_flush(x11.get());
    }
    notifier.reset();
    xcb_disconnect(events);
}

void RecordTap::enable(bool isOn)
{
    if (isOn == (sequence != 0) || !x11.isUsable()) {
        return;
    }
    if (isOn) {
        sequence = xcb_record_enable_context(events, context).sequence;
        xcb_flush(events);
    } else {
        // Waits until the server has done it: a later request to enable comes by another way.
        const auto cookie = xcb_record_disable_context_checked(x11.get(), context);
        const XcbReply<xcb_generic_error_t> failure(xcb_request_check(x11.get(), cookie));
        x11.drain();
        xcb_discard_reply(events, sequence);
        sequence = 0;
    }
}

void RecordTap::drain()
{
    void* answer = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (sequence != 0 && xcb_poll_for_reply(events, sequence, &answer, &error) != 0) {
        const XcbReply<xcb_generic_error_t> failure(error);
        const XcbKeyReply<xcb_record_enable_context_reply_t> reply(
            static_cast<xcb_record_enable_context_reply_t*>(answer));
        if (!reply) {
            sequence = 0; // the last of them
            break;
        }
        count(*reply);
    }
    // Answers to a request that was taken back, and a connection's end, must not wake us for ever.
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(events)}) {}
    if (xcb_connection_has_error(events) != 0) {
        notifier->setEnabled(false);
    }
}

void RecordTap::count(const xcb_record_enable_context_reply_t& reply) const
{
    if (reply.category != kFromServer) {
        return;
    }
    const auto size = static_cast<std::size_t>(xcb_record_enable_context_data_length(&reply));
    const std::span data(xcb_record_enable_context_data(&reply), size);
    for (std::size_t at = 0; at + kEventBytes <= data.size(); at += kEventBytes) {
        // The type, with the mark of a sent event, and the key code are an event's first bytes.
        if ((data[at] & 0x7f) == XCB_KEY_PRESS && !modifiers.contain(data[at + 1])) {
            handler();
        }
    }
}

} // namespace quillbrook
