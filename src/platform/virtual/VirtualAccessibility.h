#pragma once

#include "platform/Accessibility.h"
#include "platform/virtual/OutsideCalls.h"

namespace quillbrook {

/// A permission that is given and taken by hand; asking for it changes nothing.
class VirtualAccessibility final : public Accessibility {
public:
    explicit VirtualAccessibility(OutsideCalls& calls) : calls(calls) {}

    bool isTrusted() const override { return trusted; }
    void promptForTrust() override { calls.add(PromptCall{}); }

    void setTrusted(bool isTrusted) { trusted = isTrusted; }

private:
    OutsideCalls& calls;
    bool trusted = true;
};

} // namespace quillbrook
