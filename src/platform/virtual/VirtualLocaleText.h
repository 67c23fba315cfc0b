#pragma once

#include "platform/LocaleText.h"

namespace quillbrook {

/// Comparisons by the C library's Unicode tables, which need no locale of the computer, an order by
/// code points, and numbers with a comma before each three digits.
class VirtualLocaleText final : public LocaleText {
public:
    bool containsIgnoringCase(std::string_view text, std::string_view part) const override;
    int compareIgnoringCase(std::string_view left, std::string_view right) const override;
    std::string groupedNumber(std::int64_t number) const override;
};

} // namespace quillbrook
