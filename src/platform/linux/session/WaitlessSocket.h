#pragma once

#include <string_view>

namespace quillbrook {

/// A socket that is connected to whoever listens at `path` and never waits for anybody, to be
/// closed by the caller; -1 when nobody listens, or only somebody who lets others queue.
int connectWithoutWaiting(std::string_view path);

} // namespace quillbrook
