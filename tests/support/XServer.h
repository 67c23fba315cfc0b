#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quillbrook {

/// A virtual X server of a test's own, which $DISPLAY names while it runs. No window manager.
class XServer {
public:
    /// `options` are added to those of its command line.
    explicit XServer(const std::vector<std::string>& options = {});
    ~XServer();

    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// Ends the server at once, as a crash does.
    void kill();

private:
    void end(int signal);

    pid_t process = -1;
};

} // namespace quillbrook
