#pragma once

#include "platform/Notices.h"

#include <string>
#include <vector>

namespace quillbrook {

/// Keeps what was told.
class VirtualNotices final : public Notices {
public:
    void tell(std::string_view text) override { lines.emplace_back(text); }

    const std::vector<std::string>& told() const { return lines; }

private:
    std::vector<std::string> lines{};
};

} // namespace quillbrook
