#pragma once

#include "platform/LocaleText.h"

namespace quillbrook {

/// The Unicode case folding, the collation and the system locale of Qt Core.
class QtLocaleText final : public LocaleText {
public:
    bool containsIgnoringCase(std::string_view text, std::string_view part) const override;
    int compareIgnoringCase(std::string_view left, std::string_view right) const override;
    std::string groupedNumber(std::int64_t number) const override;
};

} // namespace quillbrook
