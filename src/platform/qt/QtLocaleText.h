#pragma once

#include "platform/LocaleText.h"

namespace quillbrook {

/// Comparisons by the Unicode case folding of Qt Core.
class QtLocaleText final : public LocaleText {
public:
    bool containsIgnoringCase(std::string_view text, std::string_view part) const override;
};

} // namespace quillbrook
