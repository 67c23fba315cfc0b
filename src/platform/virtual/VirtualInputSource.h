#pragma once

#include "platform/InputSource.h"

#include <utility>

namespace quillbrook {

/// An input source that is chosen by hand.
class VirtualInputSource final : public InputSource {
public:
    std::optional<std::string> currentIdentifier() const override { return identifier; }

    void choose(std::optional<std::string> newIdentifier) { identifier = std::move(newIdentifier); }

private:
    std::optional<std::string> identifier = "com.apple.keylayout.ABC";
};

} // namespace quillbrook
