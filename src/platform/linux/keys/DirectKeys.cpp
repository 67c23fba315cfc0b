#include "platform/linux/keys/DirectKeys.h"

#include "keycounter/keyboards/Seats.h"

#include <unistd.h>

#include <utility>

namespace quillbrook {

DirectKeys::DirectKeys(std::string folder, InputDevices& devices, const Seats& seats,
    std::function<void(std::uint64_t)> counted, std::function<void()> looked)
    : seats(seats)
    , counted(std::move(counted))
    , looked(std::move(looked))
    , keyboards(std::move(folder), devices)
    , notifier(keyboards.descriptor(), QSocketNotifier::Read)
{
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this] { read(); });
}

void DirectKeys::read()
{
    for (const auto& [seat, keys] : keyboards.takeKeyDowns()) {
        if (areOurs(seat)) {
            counted(keys);
        }
    }
    looked();
}

bool DirectKeys::areOurs(const std::string& seat) const
{
    // Where nobody keeps account of seats, users can't be switched either.
    return seats.areKnown() ? seats.activeUser(seat) == getuid() : true;
}

} // namespace quillbrook
