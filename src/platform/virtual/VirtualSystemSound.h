#pragma once

#include "platform/MainLoop.h"
#include "platform/SystemSound.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

/// A machine with the sounds that it is given, at first the two that the bell knows. It keeps what
/// it was asked for.
class VirtualSystemSound final : public SystemSound {
public:
    explicit VirtualSystemSound(MainLoop& mainLoop) : mainLoop(mainLoop) {}

    void play(std::string_view name, Answer answer) override
    {
        requests.emplace_back(name);
        const bool isThere = sounds.contains(name);
        mainLoop.post([answer = std::move(answer), isThere] { answer(isThere); });
    }

    void beep() override { requests.emplace_back("beep"); }

    void setSounds(std::set<std::string, std::less<>> newSounds) { sounds = std::move(newSounds); }

    /// The sounds that were asked for, in order; "beep" for the beep.
    const std::vector<std::string>& asked() const { return requests; }

private:
    MainLoop& mainLoop;
    std::set<std::string, std::less<>> sounds{"Glass", "Ping"};
    std::vector<std::string> requests{};
};

} // namespace quillbrook
