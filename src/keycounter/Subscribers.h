#pragma once

#include "keycounter/Handles.h"

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace quillbrook {

/// The programs that are told of keys, each until it leaves the bus.
class Subscribers {
public:
    /// `left` runs when one has left the bus.
    explicit Subscribers(std::function<void()> left) : left(std::move(left)) {}

    Subscribers(const Subscribers&) = delete;
    Subscribers& operator=(const Subscribers&) = delete;

    /// Adds who sent the call; nothing when he is one already. A negative error number when that
    /// can't be, -ENOBUFS when there are too many of his user.
    int add(sd_bus_message* call, uid_t user);

    /// Takes out who bears this name.
    void remove(const std::string& name);

    bool isEmpty() const { return all.empty(); }

    /// The names on the bus of a user's programs.
    std::vector<std::string> namesOf(uid_t user) const;

private:
    struct Subscriber {
        std::string name;
        uid_t user;
        Handle<sd_bus_track> presence;
    };

    static int hasLeft(sd_bus_track* track, void* self);

    std::function<void()> left;
    std::vector<Subscriber> all{};
};

} // namespace quillbrook
