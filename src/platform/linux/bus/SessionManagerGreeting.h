#pragma once

#include <string_view>

namespace quillbrook {

/// Whether the session manager greets who comes, as it does at once. `networkIds` are its addresses
/// as $SESSION_MANAGER holds them; the first on this machine that connects is asked, and takes a
/// second at most. True when there is none to ask. Any thread.
bool isSessionManagerAnswering(std::string_view networkIds);

} // namespace quillbrook
