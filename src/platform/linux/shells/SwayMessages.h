#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The kinds of messages of sway's own socket that are used here. What is told unasked has the
/// highest bit.
enum class SwayMessageType : std::uint32_t {
    runCommand = 0,
    subscribe = 2,
    getTree = 4,
    getInputs = 100,
    windowEvent = 0x80000003,
    inputEvent = 0x80000015,
};

struct SwayMessage {
    std::uint32_t type = 0;
    std::string payload{}; // JSON

    bool is(SwayMessageType wanted) const { return type == static_cast<std::uint32_t>(wanted); }
};

/// The bytes of a message.
std::string swayMessage(SwayMessageType type, std::string_view payload);

/// Takes messages out of a stream of bytes that comes in pieces of any size.
class SwayReader {
public:
    void append(std::string_view bytes) { buffer += bytes; }

    /// The next message that is complete.
    std::optional<SwayMessage> next();

    /// Whether the stream is none of sway's, or has a message beyond all measure.
    bool isBroken() const { return broken; }

private:
    std::string buffer{};
    bool broken = false;
};

} // namespace quillbrook
