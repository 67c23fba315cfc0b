#include "keycounter/keyboards/KeyDowns.h"

#include <linux/input.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

/// Whatever a device gives, however torn: no more keys than events, and the same number as when it
/// comes whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    const auto bytes = std::as_bytes(std::span(data, size));
    const std::uint64_t whole = KeyDowns().countIn(bytes);
    if (whole > size / sizeof(input_event)) {
        std::abort();
    }

    KeyDowns torn;
    std::uint64_t inPieces = 0;
    for (std::size_t at = 0; at < size;) {
        const std::size_t piece = std::min<std::size_t>(size - at, data[at] % 61U + 1U);
        inPieces += torn.countIn(bytes.subspan(at, piece));
        at += piece;
    }
    if (inPieces != whole) {
        std::abort();
    }
    return 0;
}
