#pragma once

#include "platform/WindowActivation.h"

#include <string>
#include <vector>

namespace quillbrook {

/// A desktop that does what it is asked, and keeps it.
class VirtualWindowActivation final : public WindowActivation {
public:
    struct Request {
        std::uint64_t window = 0;
        std::string startupId{};

        bool operator==(const Request&) const = default;
    };

    bool bring(std::uint64_t window, std::string_view startupId) override
    {
        kept.push_back({.window = window, .startupId = std::string(startupId)});
        return true;
    }

    const std::vector<Request>& requests() const { return kept; }

private:
    std::vector<Request> kept{};
};

} // namespace quillbrook
