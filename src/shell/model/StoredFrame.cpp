#include "shell/model/StoredFrame.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace quillbrook {

std::optional<StoredFrame> storedFrame(std::string_view text)
{
    constexpr int kFarthest = 1 << 20; // sums of such numbers stay numbers
    std::array<int, 4> parts{};
    const char* position = text.data();
    const char* end = position + text.size();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && (position == end || *position++ != ' ')) {
            return std::nullopt;
        }
        const auto read = std::from_chars(position, end, parts.at(i));
        if (read.ec != std::errc() || parts.at(i) > kFarthest || parts.at(i) < -kFarthest) {
            return std::nullopt;
        }
        position = read.ptr;
    }
    const StoredFrame frame{.x = parts[0], .y = parts[1], .width = parts[2], .height = parts[3]};
    return position == end && frame.width > 0 && frame.height > 0 ? std::optional(frame)
                                                                  : std::nullopt;
}

} // namespace quillbrook
