#include "base/Uuid.h"

#include <bit>
#include <random>

namespace quillbrook {

namespace {

std::mt19937_64 seeded()
{
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device()};
    return std::mt19937_64(seed);
}

} // namespace

Uuid Uuid::random()
{
    // Thousands of rows take one each at a refresh, too many to ask the system every time.
    thread_local std::mt19937_64 engine = seeded();
    Uuid uuid{std::bit_cast<std::array<std::uint8_t, 16>>(
        std::array<std::uint64_t, 2>{engine(), engine()})};
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

} // namespace quillbrook
