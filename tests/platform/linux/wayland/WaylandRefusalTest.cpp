#include "platform/linux/wayland/WaylandConnection.h"

#include "platform/virtual/VirtualMainLoop.h"
#include "support/TemporaryDirectory.h"

#include <wayland-client.h>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

bool isMemoryShort = false;
int openedMeanwhile = -1;

} // namespace

/// Stands before the library's own. When memory is short, that one closes the socket, and another
/// thread may get its number for a file of its own at once.
extern "C" wl_display* wl_display_connect_to_fd(int socket)
{
    if (isMemoryShort) {
        close(socket);
        openedMeanwhile = open("/dev/null", O_RDONLY | O_CLOEXEC);
        return nullptr;
    }
    const auto ofLibrary = reinterpret_cast<decltype(&wl_display_connect_to_fd)>(
        dlsym(RTLD_NEXT, "wl_display_connect_to_fd"));
    return ofLibrary(socket);
}

namespace quillbrook {
namespace {

TEST(WaylandRefusal, ClosesNothingOfOthers)
{
    const TemporaryDirectory directory;
    const std::string path = directory.path() / "wayland-0";
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    std::ranges::copy(path, name.sun_path);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    ASSERT_EQ(listen(listener, 1), 0);

    VirtualClock clock{0};
    VirtualMainLoop mainLoop{clock};
    WaylandConnection compositor(mainLoop, path);
    isMemoryShort = true;
    EXPECT_FALSE(compositor.connect());
    isMemoryShort = false;
    EXPECT_FALSE(compositor.isUsable());
    ASSERT_GE(openedMeanwhile, 0);
    EXPECT_GE(fcntl(openedMeanwhile, F_GETFD), 0);
    close(openedMeanwhile);
    close(listener);
}

} // namespace
} // namespace quillbrook
