#pragma once

#include <string_view>

namespace quillbrook {

/// Comparisons of text by the rules of the user's language. Any thread.
class LocaleText {
public:
    virtual ~LocaleText() = default;

    /// Whether `part` stands somewhere in `text`, capitals and small letters alike. Both are UTF-8.
    /// macOS and Linux: case folding of Qt Core.
    virtual bool containsIgnoringCase(std::string_view text, std::string_view part) const = 0;
};

} // namespace quillbrook
