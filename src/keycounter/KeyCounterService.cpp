#include "keycounter/KeyCounterService.h"

#include "keycounter/keyboards/KeyCounterNames.h"
#include "keycounter/keyboards/Keyboards.h"
#include "keycounter/keyboards/Seats.h"

#include <sys/epoll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::uint64_t kSecondUsec = 1'000'000;
constexpr std::uint64_t kAccuracyUsec = 1'000;

/// The user whose program sent the call, as the bus itself knows it; a negative error number when
/// it doesn't tell.
std::pair<int, uid_t> userOf(sd_bus_message* call)
{
    sd_bus_creds* found = nullptr;
    int result = sd_bus_query_sender_creds(call, SD_BUS_CREDS_EUID, &found);
    const Handle<sd_bus_creds> creds(found);
    uid_t user = 0;
    if (result >= 0) {
        result = sd_bus_creds_get_euid(found, &user);
    }
    return {result, user};
}

} // namespace

KeyCounterService::KeyCounterService(std::string folder, InputDevices& devices, const Seats& seats)
    : folder(std::move(folder))
    , devices(devices)
    , seats(seats)
    , subscribers([this] { openOrCloseKeyboards(); })
{
}

KeyCounterService::~KeyCounterService() = default;

int KeyCounterService::run()
{
    const int result = appear();
    if (result < 0) {
        std::fprintf(stderr, "quillbrook-keycounter: %s\n", std::strerror(-result));
        return EXIT_FAILURE;
    }
    return sd_event_loop(loop.get());
}

int KeyCounterService::appear()
{
    static const auto kVtable = std::to_array<sd_bus_vtable>({
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD(KeyCounterNames::kSubscribe, "", "", subscribe, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD(
            KeyCounterNames::kUnsubscribe, "", "", unsubscribe, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL_WITH_NAMES(KeyCounterNames::kKeysPressed, "u", SD_BUS_PARAM(count), 0),
        SD_BUS_VTABLE_END,
    });

    sd_event* newLoop = nullptr;
    int result = sd_event_new(&newLoop);
    loop.reset(newLoop);
    if (result < 0) {
        return result;
    }
    sd_bus* newBus = nullptr;
    result = sd_bus_open_system(&newBus);
    bus.reset(newBus);
    if (result < 0) {
        return result;
    }
    sd_bus_slot* newObject = nullptr;
    result = sd_bus_add_object_vtable(newBus, &newObject, KeyCounterNames::kPath,
        KeyCounterNames::kInterface, kVtable.data(), this);
    object.reset(newObject);
    if (result >= 0) {
        result = sd_bus_set_exit_on_disconnect(newBus, 1);
    }
    if (result >= 0) {
        result = sd_bus_attach_event(newBus, newLoop, SD_EVENT_PRIORITY_NORMAL);
    }
    return result < 0 ? result : sd_bus_request_name(newBus, KeyCounterNames::kService, 0);
}

int KeyCounterService::subscribe(sd_bus_message* call, void* self, sd_bus_error* error)
{
    auto& service = *static_cast<KeyCounterService*>(self);
    const auto [result, user] = userOf(call);
    if (result < 0) {
        return result;
    }
    if (!service.seats.isPresent(user)) {
        return sd_bus_error_set(
            error, SD_BUS_ERROR_ACCESS_DENIED, "Only for users with a session on a seat");
    }
    const int added = service.subscribers.add(call, user);
    if (added == -ENOBUFS) {
        return sd_bus_error_set(error, SD_BUS_ERROR_LIMITS_EXCEEDED, "Too many subscribers");
    }
    if (added < 0) {
        return added;
    }
    service.openOrCloseKeyboards();
    return sd_bus_reply_method_return(call, nullptr);
}

int KeyCounterService::unsubscribe(sd_bus_message* call, void* self, sd_bus_error*)
{
    auto& service = *static_cast<KeyCounterService*>(self);
    service.subscribers.remove(sd_bus_message_get_sender(call));
    service.openOrCloseKeyboards();
    return sd_bus_reply_method_return(call, nullptr);
}

void KeyCounterService::openOrCloseKeyboards()
{
    const bool areWanted = !subscribers.isEmpty();
    if (areWanted == (keyboards != nullptr)) {
        return;
    }
    reading.reset();
    keyboards.reset();
    second.reset();
    waitingKeys.clear();
    if (areWanted) {
        keyboards = std::make_unique<Keyboards>(folder, devices);
        sd_event_source* source = nullptr;
        sd_event_add_io(
            loop.get(), &source, keyboards->descriptor(), EPOLLIN, keyboardsReadable, this);
        reading.reset(source);
    }
}

int KeyCounterService::keyboardsReadable(sd_event_source*, int, std::uint32_t, void* self)
{
    static_cast<KeyCounterService*>(self)->takeKeys();
    return 0;
}

void KeyCounterService::takeKeys()
{
    for (const auto& [seat, keys] : keyboards->takeKeyDowns()) {
        if (const auto user = seats.activeUser(seat)) {
            waitingKeys[*user] += keys;
        }
    }
    if (waitingKeys.empty() || second) {
        return;
    }
    // At the end of a second of the clock, not one after the key: when a message comes then tells
    // nothing of when the key went down.
    std::uint64_t now = 0;
    sd_event_now(loop.get(), CLOCK_MONOTONIC, &now);
    sd_event_source* source = nullptr;
    sd_event_add_time(loop.get(), &source, CLOCK_MONOTONIC, (now / kSecondUsec + 1) * kSecondUsec,
        kAccuracyUsec, secondEnded, this);
    second.reset(source);
}

int KeyCounterService::secondEnded(sd_event_source*, std::uint64_t, void* self)
{
    static_cast<KeyCounterService*>(self)->tellSubscribers();
    return 0;
}

void KeyCounterService::tellSubscribers()
{
    second.reset();
    for (const auto& [user, keys] : std::exchange(waitingKeys, {})) {
        if (!seats.isActive(user)) {
            continue; // he has left the seat to somebody else meanwhile
        }
        for (const std::string& name : subscribers.namesOf(user)) {
            tell(name, keys);
        }
    }
}

void KeyCounterService::tell(const std::string& name, std::uint64_t keys)
{
    sd_bus_message* created = nullptr;
    if (sd_bus_message_new_signal(bus.get(), &created, KeyCounterNames::kPath,
            KeyCounterNames::kInterface, KeyCounterNames::kKeysPressed)
        < 0) {
        return;
    }
    const Handle<sd_bus_message> signal(created);
    const auto count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(keys, std::numeric_limits<std::uint32_t>::max()));
    if (sd_bus_message_append(created, "u", count) >= 0) {
        sd_bus_send_to(bus.get(), created, name.c_str(), nullptr);
    }
}

} // namespace quillbrook
