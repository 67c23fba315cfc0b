#include "platform/linux/sound/CanberraThread.h"

#include <canberra.h>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <iterator>
#include <system_error>
#include <thread>

namespace quillbrook {

namespace {

constexpr int kPatienceMs = 500;

ca_context* newContext()
{
    ca_context* context = nullptr;
    if (ca_context_create(&context) != CA_SUCCESS) {
        return nullptr;
    }
    ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Quillbrook", CA_PROP_APPLICATION_ID,
        "cn.tarnlow.quillbrook", static_cast<char*>(nullptr));
    return context;
}

bool play(const char* eventSound)
{
    // Opened by the first sound that finds a server, connected again by itself, and never
    // destroyed: the library would unload its driver from under threads that still play.
    static ca_context* const context = newContext();
    if (context == nullptr) {
        return false;
    }
    const int result
        = ca_context_play(context, 0, CA_PROP_EVENT_ID, eventSound, static_cast<char*>(nullptr));
    // A sound that the user has switched off is there, and silent.
    return result == CA_SUCCESS || result == CA_ERROR_DISABLED;
}

void serve(int socket)
{
    unsigned char request = 0;
    while (recv(socket, &request, 1, 0) == 1) {
        const bool isPlayed = request < std::size(kEventSounds) && play(kEventSounds[request]);
        const unsigned char answer = isPlayed ? 1 : 0;
        send(socket, &answer, 1, MSG_NOSIGNAL);
    }
    ::close(socket); // tells the other side that nothing runs here any more
}

} // namespace

CanberraThread::CanberraThread()
{
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return;
    }
    try {
        std::thread(serve, ends[1]).detach();
        ours = ends[0];
    } catch (const std::system_error&) {
        ::close(ends[0]);
        ::close(ends[1]);
    }
}

CanberraThread::~CanberraThread()
{
    if (ours < 0) {
        return;
    }
    shutdown(ours, SHUT_WR);
    pollfd end{.fd = ours, .events = 0, .revents = 0}; // reports the closing of the other side
    poll(&end, 1, kPatienceMs);
    ::close(ours);
}

} // namespace quillbrook
