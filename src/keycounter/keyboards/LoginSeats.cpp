#include "keycounter/keyboards/LoginSeats.h"

#include <systemd/sd-login.h>

namespace quillbrook {

std::optional<uid_t> LoginSeats::activeUser(const std::string& seat) const
{
    uid_t user = 0;
    if (sd_seat_get_active(seat.c_str(), nullptr, &user) < 0) {
        return std::nullopt;
    }
    return user;
}

bool LoginSeats::isActive(uid_t user) const
{
    return sd_uid_get_seats(user, 1, nullptr) > 0;
}

bool LoginSeats::isPresent(uid_t user) const
{
    return sd_uid_get_seats(user, 0, nullptr) > 0;
}

bool LoginSeats::areKnown() const
{
    return sd_get_seats(nullptr) > 0;
}

} // namespace quillbrook
