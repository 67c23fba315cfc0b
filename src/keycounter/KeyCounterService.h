#pragma once

#include "keycounter/Handles.h"
#include "keycounter/Subscribers.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace quillbrook {

class InputDevices;
class Keyboards;
class Seats;

/// Counts keys for those who ask over the system bus. A subscriber is told once a second at most,
/// on whole seconds, how many keys went down on the seat where his session is active; nobody is
/// told more. The keyboards are open only while there are subscribers.
class KeyCounterService {
public:
    /// Reads the devices under `folder`. `devices` and `seats` outlive the service.
    KeyCounterService(std::string folder, InputDevices& devices, const Seats& seats);
    ~KeyCounterService();

    KeyCounterService(const KeyCounterService&) = delete;
    KeyCounterService& operator=(const KeyCounterService&) = delete;

    /// Serves until the bus goes away; the process's exit status. One line on standard error when
    /// the bus doesn't let it begin.
    int run();

private:
    static int subscribe(sd_bus_message* call, void* self, sd_bus_error* error);
    static int unsubscribe(sd_bus_message* call, void* self, sd_bus_error* error);
    static int keyboardsReadable(sd_event_source* source, int, std::uint32_t, void* self);
    static int secondEnded(sd_event_source* source, std::uint64_t, void* self);

    int appear();
    void openOrCloseKeyboards();
    void takeKeys();
    void tellSubscribers();
    void tell(const std::string& name, std::uint64_t keys);

    std::string folder;
    InputDevices& devices;
    const Seats& seats;
    Handle<sd_event> loop{};
    Handle<sd_bus> bus{};
    Handle<sd_bus_slot> object{};
    Subscribers subscribers;
    std::unique_ptr<Keyboards> keyboards{};
    Handle<sd_event_source> reading{};
    Handle<sd_event_source> second{}; // while keys wait for its end
    std::map<uid_t, std::uint64_t> waitingKeys{};
};

} // namespace quillbrook
