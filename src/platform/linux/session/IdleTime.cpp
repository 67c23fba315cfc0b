#include "platform/linux/session/IdleTime.h"

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

/// A seat of which no rest was told by then is in use: the desktop's clock may be a little late.
constexpr double kProofSec = kIdleNoticeSec + 1;

} // namespace

IdleTime::IdleTime(std::function<double()> clock) : now(std::move(clock)), lastInputAt(now()) {}

void IdleTime::asked(Seat seat)
{
    seats[seat] = {.activity = Activity::unproven, .askedAt = now()};
}

void IdleTime::idled(Seat seat)
{
    const auto found = seats.find(seat);
    if (found == seats.end()) {
        return;
    }
    if (isActive(found->second)) {
        sawInputAt(now() - kIdleNoticeSec);
    } // else it rested since we asked, and maybe longer
    found->second.activity = Activity::idle;
}

void IdleTime::rested(Seat seat, double seconds)
{
    const auto found = seats.find(seat);
    if (found == seats.end()) {
        return;
    }
    sawInputAt(now() - seconds);
    found->second.activity = Activity::idle;
}

void IdleTime::resumed(Seat seat)
{
    const auto found = seats.find(seat);
    if (found == seats.end()) {
        return;
    }
    sawInputAt(now());
    found->second.activity = Activity::active;
}

void IdleTime::gone(Seat seat)
{
    const auto found = seats.find(seat);
    if (found == seats.end()) {
        return;
    }
    if (isActive(found->second)) {
        sawInputAt(now());
    }
    seats.erase(found);
}

double IdleTime::secondsSinceLastInput() const
{
    const bool isAnyActive
        = std::ranges::any_of(seats, [this](const auto& entry) { return isActive(entry.second); });
    return isAnyActive ? 0 : std::max(now() - lastInputAt, 0.0);
}

bool IdleTime::isActive(const SeatState& seat) const
{
    return seat.activity == Activity::active
        || (seat.activity == Activity::unproven && now() - seat.askedAt >= kProofSec);
}

void IdleTime::sawInputAt(double time)
{
    lastInputAt = std::max(lastInputAt, time);
}

} // namespace quillbrook
