#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillbrook {

/// Comparisons of text and forms of numbers by the rules of the user's language. Any thread.
class LocaleText {
public:
    virtual ~LocaleText() = default;

    /// Whether `part` stands somewhere in `text`, capitals and small letters alike. Both are UTF-8.
    /// macOS and Linux: case folding of Qt Core.
    virtual bool containsIgnoringCase(std::string_view text, std::string_view part) const = 0;

    /// Where `left` stands to `right` in a list for people, capitals and small letters alike:
    /// before it below 0, behind it above 0, level with it at 0. Both are UTF-8. macOS and Linux:
    /// collation of Qt Core's system locale.
    virtual int compareIgnoringCase(std::string_view left, std::string_view right) const = 0;

    /// A whole number with its digits grouped as the user's language groups them. macOS and Linux:
    /// Qt Core's system locale.
    virtual std::string groupedNumber(std::int64_t number) const = 0;
};

} // namespace quillbrook
