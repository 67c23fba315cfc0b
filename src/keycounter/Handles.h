#pragma once

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <memory>

namespace quillbrook {

/// Gives a handle of the bus library back.
struct Unref {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
    void operator()(sd_bus_track* track) const { sd_bus_track_unref(track); }
    void operator()(sd_bus_creds* creds) const { sd_bus_creds_unref(creds); }
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
    void operator()(sd_event* loop) const { sd_event_unref(loop); }
    void operator()(sd_event_source* source) const { sd_event_source_disable_unref(source); }
};

/// A handle of the bus library that is given back at its end.
template <typename T>
using Handle = std::unique_ptr<T, Unref>;

} // namespace quillbrook
