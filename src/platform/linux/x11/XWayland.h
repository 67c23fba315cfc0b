#pragma once

namespace quillbrook {

class X11Connection;

/// Whether the server is a guest of a Wayland desktop. Such a one sees only the windows and the
/// input of its own programs: it is no display of the session's. Waits for the server.
bool isXWayland(X11Connection& x11);

} // namespace quillbrook
