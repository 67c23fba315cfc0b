#include "keycounter/keyboards/KeyDowns.h"

#include <string.h> // NOLINT: explicit_bzero is in this one

#include <algorithm>
#include <cstring>

namespace quillbrook {

namespace {

constexpr std::int32_t kPressed = 1; // 0 is a release, 2 a repeat

} // namespace

std::uint64_t KeyDowns::countIn(std::span<const std::byte> bytes)
{
    std::uint64_t keyDowns = 0;
    while (!bytes.empty()) {
        const std::size_t taken = std::min(torn.size() - tornSize, bytes.size());
        std::ranges::copy(bytes.first(taken), torn.begin() + static_cast<std::ptrdiff_t>(tornSize));
        bytes = bytes.subspan(taken);
        tornSize += taken;
        if (tornSize < torn.size()) {
            break;
        }
        input_event event{};
        std::memcpy(&event, torn.data(), torn.size());
        keyDowns += isCountedKeyDown(event) ? 1 : 0;
        explicit_bzero(&event, sizeof event);
        explicit_bzero(torn.data(), torn.size());
        tornSize = 0;
    }
    return keyDowns;
}

bool KeyDowns::isCountedKeyDown(const input_event& event)
{
    if (event.type == EV_SYN) {
        if (event.code == SYN_DROPPED) {
            hasLostEvents = true;
        } else if (event.code == SYN_REPORT) {
            hasLostEvents = false;
        }
        return false;
    }
    return event.type == EV_KEY && event.value == kPressed && !hasLostEvents
        && isCountedKey(event.code);
}

} // namespace quillbrook
