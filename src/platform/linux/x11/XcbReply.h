#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillbrook {

struct FreeReply {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error of the X server, which frees itself. Empty when there is none.
template <typename T>
using XcbReply = std::unique_ptr<T, FreeReply>;

struct WipeAndFreeReply {
    void operator()(void* memory) const
    {
        constexpr std::size_t kLeastBytes = 32;
        const auto* answer = static_cast<const xcb_ge_generic_event_t*>(memory);
        const int type = answer->response_type & 0x7f;
        // Those of a reply, whose type is 1, and of an extension's event stand in the same place.
        const std::size_t words = type == 1 || type == XCB_GE_GENERIC ? answer->length : 0;
        explicit_bzero(memory, kLeastBytes + words * 4);
        std::free(memory);
    }
};

/// A reply or an event with key codes, of which nothing stays behind in freed memory: keys that
/// came in one go would lie there in their order.
template <typename T>
using XcbKeyReply = std::unique_ptr<T, WipeAndFreeReply>;

} // namespace quillbrook
