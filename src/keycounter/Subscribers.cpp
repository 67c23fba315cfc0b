#include "keycounter/Subscribers.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::ptrdiff_t kMaxOfOneUser = 16;

} // namespace

int Subscribers::add(sd_bus_message* call, uid_t user)
{
    const std::string name = sd_bus_message_get_sender(call);
    if (std::ranges::find(all, name, &Subscriber::name) != all.end()) {
        return 0;
    }
    if (std::ranges::count(all, user, &Subscriber::user) >= kMaxOfOneUser) {
        return -ENOBUFS;
    }
    sd_bus_track* track = nullptr;
    int result = sd_bus_track_new(sd_bus_message_get_bus(call), &track, hasLeft, this);
    Handle<sd_bus_track> presence(track);
    if (result >= 0) {
        result = sd_bus_track_add_name(track, name.c_str());
    }
    if (result >= 0) {
        all.push_back({.name = name, .user = user, .presence = std::move(presence)});
    }
    return result;
}

void Subscribers::remove(const std::string& name)
{
    std::erase_if(all, [&name](const Subscriber& one) { return one.name == name; });
}

std::vector<std::string> Subscribers::namesOf(uid_t user) const
{
    std::vector<std::string> names;
    for (const Subscriber& one : all) {
        if (one.user == user) {
            names.push_back(one.name);
        }
    }
    return names;
}

int Subscribers::hasLeft(sd_bus_track* track, void* self)
{
    auto& subscribers = *static_cast<Subscribers*>(self);
    std::erase_if(
        subscribers.all, [track](const Subscriber& one) { return one.presence.get() == track; });
    subscribers.left();
    return 0;
}

} // namespace quillbrook
