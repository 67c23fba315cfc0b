#include "platform/linux/bus/BusConversation.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzSocket.h"

#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace quillbrook {
namespace {

/// Says the same to each that comes: what it was given last.
class Speaker {
public:
    Speaker()
    {
        std::thread([this] {
            while (true) {
                const int peer = socket.accept();
                FuzzSocket::sayAndEnd(peer, latestWords());
                // Both ends are closed when the other one has said all.
                char ignored = 0;
                while (recv(peer, &ignored, 1, 0) > 0) {}
                close(peer);
            }
        }).detach();
    }

    std::string address() const { return "unix:path=" + socket.path(); }

    /// To be said to whoever connects from now on. One who has gone may still be spoken to.
    void setWords(std::string text)
    {
        const std::lock_guard lock(mutex);
        words = std::move(text);
    }

private:
    std::string latestWords()
    {
        const std::lock_guard lock(mutex);
        return words;
    }

    FuzzSocket socket{};
    std::mutex mutex{};
    std::string words{};
};

std::string loginAnd(std::string_view messages)
{
    return "OK " + std::string(32, '0') + "\r\n" + std::string(messages);
}

} // namespace
} // namespace quillbrook

/// Whatever an address holds and whatever a bus says, a conversation with it ends.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    static auto& speaker = *new Speaker(); // outlives its thread
    FuzzInput input(data, size);
    if (input.byte() % 8 == 0) {
        // No path in an address leads anywhere else by chance.
        const BusConversation conversation("unix:" + std::string(input.takeAll()));
        require(!conversation.isAnswered());
        return 0;
    }
    const bool isLoginSpoken = input.byte() % 2 == 0;
    const auto words = input.takeAll();
    speaker.setWords(isLoginSpoken ? std::string(words) : loginAnd(words));
    BusConversation conversation(speaker.address());
    if (conversation.isAnswered()) {
        conversation.answerTo({.service = "a.b", .path = "/", .interface = "c.d", .member = "E"});
    }
    return 0;
}
