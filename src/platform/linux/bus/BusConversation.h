#pragma once

#include "platform/linux/bus/LocalSocket.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// A call of a method without arguments.
struct BusCall {
    std::string_view service;
    std::string_view path;
    std::string_view interface;
    std::string_view member;
};

/// A few words with a message bus, to learn whether it and those on it are alive. A bus library
/// waits for a silent bus without end; here each word has one second for its answer. Any thread,
/// one at a time.
class BusConversation {
public:
    /// Connects to the first bus of `address` that lets itself be connected to, and introduces us.
    /// Only sockets of this machine are tried.
    explicit BusConversation(std::string_view address);

    /// Whether the bus let us in.
    bool isAnswered() const { return hasEntered; }

    /// Whether nobody listens at the address: a bus library, too, is refused there at once.
    bool isRefused() const { return wasRefused; }

    /// Calls a service without starting it. Empty when no answer comes; else the answer's first
    /// argument where that is a text, and an empty text for all other answers and for errors.
    std::optional<std::string> answerTo(const BusCall& call);

private:
    struct Message {
        std::uint32_t repliesTo = 0;
        bool isReturn = false;
        std::string body{};
        bool beginsWithText = false;
    };

    bool logIn();
    std::optional<Message> nextMessage() const;

    LocalSocket socket{};
    std::uint32_t lastSerial = 0;
    bool hasEntered = false;
    bool wasRefused = false;
};

} // namespace quillbrook
