#include "platform/linux/session/WaitlessSocket.h"

#include "support/TemporaryDirectory.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

TEST(WaitlessSocket, NobodyIsThere)
{
    const TemporaryDirectory directory;
    EXPECT_LT(connectWithoutWaiting(""), 0);
    EXPECT_LT(connectWithoutWaiting((directory.path() / "none").string()), 0);
    EXPECT_LT(connectWithoutWaiting(std::string(200, 'x')), 0);
}

TEST(WaitlessSocket, DoesNotQueueForWhoLetsOthersQueue)
{
    const TemporaryDirectory directory;
    const std::string path = (directory.path() / "socket").string();
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    std::ranges::copy(path, name.sun_path);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    ASSERT_EQ(listen(listener, 0), 0);

    std::vector<int> connected; // until nobody more fits in
    int last = connectWithoutWaiting(path);
    for (; last >= 0 && connected.size() < 1000; last = connectWithoutWaiting(path)) {
        connected.push_back(last);
    }
    EXPECT_FALSE(connected.empty());
    EXPECT_LT(last, 0);
    for (const int socket : connected) {
        close(socket);
    }
    close(listener);
}

} // namespace
} // namespace quillbrook
