#pragma once

#include <functional>

namespace quillbrook {

class X11Connection;

/// Tells when the X server's own screen saver covers the screens: `changed(true)`, and when it no
/// longer does. Tells nothing where the extension is missing. Lives as long as the connection.
class X11ScreenSaver {
public:
    X11ScreenSaver(X11Connection& x11, std::function<void(bool)> changed);
};

} // namespace quillbrook
