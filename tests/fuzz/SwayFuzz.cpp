#include "platform/linux/shells/SwayJson.h"
#include "platform/linux/shells/SwayMessages.h"
#include "tests/fuzz/FuzzInput.h"

#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

std::vector<SwayMessage> messagesIn(FuzzInput input, std::size_t pieceSize)
{
    std::vector<SwayMessage> messages;
    SwayReader reader;
    while (!input.isEmpty()) {
        reader.append(input.take(pieceSize));
        while (auto message = reader.next()) {
            messages.push_back(std::move(*message));
        }
    }
    return messages;
}

void check(const std::optional<FrontWindow>& window)
{
    if (window) {
        require(window->process > 0);
        requireValid(window->traits.applicationId);
        requireValid(window->traits.className);
        requireValid(window->traits.instance);
    }
}

void check(const std::optional<std::string>& layout)
{
    if (layout) {
        require(!layout->empty());
        requireValid(*layout);
    }
}

void checkJson(const std::string& json)
{
    check(focusedWindowOfEvent(json));
    check(focusedWindowOfTree(json));
    check(layoutOfEvent(json));
    check(layoutOfInputs(json));
    isDone(json);
}

} // namespace
} // namespace quillbrook

/// Whatever comes through sway's socket, and in pieces of any size: the same messages, and what is
/// taken out of them is sound.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    FuzzInput input(data, size);
    const std::size_t pieceSize = input.byte();
    if (pieceSize == 0) { // JSON without its frame, to get further in it
        checkJson(std::string(input.takeAll()));
        return 0;
    }
    const auto torn = messagesIn(input, pieceSize);
    const auto whole = messagesIn(input, size);
    require(torn.size() == whole.size());
    for (std::size_t i = 0; i < torn.size(); ++i) {
        require(torn[i].type == whole[i].type && torn[i].payload == whole[i].payload);
        checkJson(whole[i].payload);
    }
    return 0;
}
