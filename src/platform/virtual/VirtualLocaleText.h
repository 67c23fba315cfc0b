#pragma once

#include "platform/LocaleText.h"

namespace quillbrook {

/// Comparisons by the C library's Unicode tables, which need no locale of the computer.
class VirtualLocaleText final : public LocaleText {
public:
    bool containsIgnoringCase(std::string_view text, std::string_view part) const override;
};

} // namespace quillbrook
