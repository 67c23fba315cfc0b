#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace quillbrook {

/// Who sits where: a seat is a screen with its keyboards, and several users may have sessions on
/// it, one of which is active.
class Seats {
public:
    virtual ~Seats() = default;

    /// The user whose session is active on a seat; empty when nobody's is known to be.
    virtual std::optional<uid_t> activeUser(const std::string& seat) const = 0;

    /// Whether the user has a session on any seat, and an active one.
    virtual bool isActive(uid_t user) const = 0;

    /// Whether the user has a session on any seat.
    virtual bool isPresent(uid_t user) const = 0;

    /// Whether anybody on this machine keeps account of seats at all.
    virtual bool areKnown() const = 0;
};

} // namespace quillbrook
