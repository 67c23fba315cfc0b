#pragma once

#include "base/Text.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace quillbrook {

/// What has to hold whatever the input.
inline void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

inline void requireValid(std::string_view text)
{
    require(isValidUtf8(text));
}

/// The bytes of an input, zeros behind their end.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : rest(reinterpret_cast<const char*>(data), size)
    {
    }

    bool isEmpty() const { return rest.empty(); }
    std::uint8_t byte() { return number<std::uint8_t>(); }

    template <typename T>
    T number()
    {
        T value{};
        const std::string_view bytes = take(sizeof value);
        std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }

    std::string_view take(std::size_t count)
    {
        const std::string_view bytes = rest.substr(0, count);
        rest.remove_prefix(bytes.size());
        return bytes;
    }

    std::string_view takeAll() { return take(rest.size()); }

private:
    std::string_view rest;
};

} // namespace quillbrook
