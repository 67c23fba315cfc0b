#pragma once

#include <linux/input.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <vector>

namespace quillbrook {

using Bytes = std::vector<std::byte>;

/// What the kernel writes for one event.
inline Bytes eventBytes(unsigned type, unsigned code, int value)
{
    input_event event{};
    event.input_event_sec = 1767257400;
    event.input_event_usec = 123456;
    event.type = static_cast<std::uint16_t>(type);
    event.code = static_cast<std::uint16_t>(code);
    event.value = value;
    Bytes bytes(sizeof event);
    std::memcpy(bytes.data(), &event, sizeof event);
    return bytes;
}

inline Bytes joinedBytes(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

inline Bytes report()
{
    return eventBytes(EV_SYN, SYN_REPORT, 0);
}

/// What a keyboard's device gives when a key goes down, with the scan code before and the report
/// behind.
inline Bytes keyDown(unsigned code)
{
    return joinedBytes(
        {eventBytes(EV_MSC, MSC_SCAN, 0x70004), eventBytes(EV_KEY, code, 1), report()});
}

inline Bytes keyUp(unsigned code)
{
    return joinedBytes(
        {eventBytes(EV_MSC, MSC_SCAN, 0x70004), eventBytes(EV_KEY, code, 0), report()});
}

inline Bytes typed(unsigned code)
{
    return joinedBytes({keyDown(code), keyUp(code)});
}

inline Bytes repeated(const Bytes& bytes, std::size_t times)
{
    Bytes all;
    for (std::size_t i = 0; i < times; ++i) {
        all.insert(all.end(), bytes.begin(), bytes.end());
    }
    return all;
}

} // namespace quillbrook
