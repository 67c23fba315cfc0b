#include "platform/linux/shells/SwayMessages.h"

#include <cstring>

namespace quillbrook {

namespace {

constexpr std::string_view kMagic = "i3-ipc";
constexpr std::size_t kHeadBytes = kMagic.size() + 2 * sizeof(std::uint32_t);
constexpr std::uint32_t kMostPayloadBytes = 32 << 20;

std::string bytesOf(std::uint32_t number)
{
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

std::uint32_t numberAt(const std::string& bytes, std::size_t at)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

} // namespace

std::string swayMessage(SwayMessageType type, std::string_view payload)
{
    return std::string(kMagic) + bytesOf(static_cast<std::uint32_t>(payload.size()))
        + bytesOf(static_cast<std::uint32_t>(type)) + std::string(payload);
}

std::optional<SwayMessage> SwayReader::next()
{
    if (broken || buffer.size() < kHeadBytes) {
        return std::nullopt;
    }
    const std::uint32_t size = numberAt(buffer, kMagic.size());
    if (!buffer.starts_with(kMagic) || size > kMostPayloadBytes) {
        broken = true;
        return std::nullopt;
    }
    if (buffer.size() - kHeadBytes < size) {
        return std::nullopt;
    }
    SwayMessage message{.type = numberAt(buffer, kMagic.size() + sizeof size),
        .payload = buffer.substr(kHeadBytes, size)};
    buffer.erase(0, kHeadBytes + size);
    return message;
}

} // namespace quillbrook
