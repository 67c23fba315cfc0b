#pragma once

#include <cstdint>
#include <functional>
#include <map>

namespace quillbrook {

/// A desktop is asked to tell when nobody has touched a seat for so long, and when somebody does
/// again.
constexpr double kIdleNoticeSec = 5;

/// How long ago the last input was, from what a desktop tells of its seats. While it tells nothing,
/// time passes since it was known last: nobody is ever taken for present without a sign. Main
/// thread only.
class IdleTime {
public:
    using Seat = std::uint32_t;

    /// `clock` tells seconds, and never goes back.
    explicit IdleTime(std::function<double()> clock);

    /// The desktop was asked to tell of a seat from now on.
    void asked(Seat seat);

    /// Nobody has touched the seat for `kIdleNoticeSec`.
    void idled(Seat seat);

    /// Nobody has touched the seat for so many seconds, as the desktop says when it is asked.
    void rested(Seat seat, double seconds);

    /// Somebody touches the seat again.
    void resumed(Seat seat);

    /// The desktop tells no longer of the seat.
    void gone(Seat seat);

    /// Whether the desktop tells of any seat.
    bool isKnown() const { return !seats.empty(); }

    /// Seconds since the last input on any seat, at least 0; since the beginning where there was
    /// none.
    double secondsSinceLastInput() const;

private:
    enum class Activity : std::uint8_t { unproven, active, idle };
    struct SeatState {
        Activity activity = Activity::unproven;
        double askedAt = 0;
    };

    bool isActive(const SeatState& seat) const;
    void sawInputAt(double time);

    std::function<double()> now;
    std::map<Seat, SeatState> seats{};
    double lastInputAt;
};

} // namespace quillbrook
