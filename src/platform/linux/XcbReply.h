#pragma once

#include <cstdlib>
#include <memory>

namespace quillbrook {

struct FreeReply {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error of the X server, which frees itself. Empty when there is none.
template <typename T>
using XcbReply = std::unique_ptr<T, FreeReply>;

} // namespace quillbrook
