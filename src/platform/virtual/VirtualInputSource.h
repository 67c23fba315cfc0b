#pragma once

#include "platform/InputSource.h"

#include <functional>
#include <utility>

namespace quillbrook {

/// An input source that is chosen by hand.
class VirtualInputSource final : public InputSource {
public:
    std::optional<std::string> currentIdentifier() const override
    {
        asked();
        return identifier;
    }

    void choose(std::optional<std::string> newIdentifier) { identifier = std::move(newIdentifier); }

    /// Runs `body` each time the input source is asked for, before the answer.
    void onAsked(std::function<void()> body) { asked = std::move(body); }

private:
    std::function<void()> asked = [] {};
    std::optional<std::string> identifier = "com.apple.keylayout.ABC";
};

} // namespace quillbrook
