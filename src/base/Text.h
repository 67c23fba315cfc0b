#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace quillbrook {

/// The shortest decimal text that reads back as the same double, whatever the locale. A whole
/// number has no fraction: "1767225600". Fatal when `value` is not finite.
std::string shortestText(double value);

/// `value` with `decimals` digits behind the point, rounded to the nearest, whatever the locale.
/// Fatal when `value` is not finite.
std::string fixedText(double value, int decimals);

/// `text` with each single quote doubled, to stand between single quotes in SQL.
std::string sqlQuoted(std::string_view text);

/// `form` with each "{}" replaced by the next of `values`. Fatal when their numbers differ.
std::string filled(std::string_view form, std::initializer_list<std::string_view> values);

/// `text` with every byte that is no part of well-formed UTF-8 replaced by U+FFFD.
std::string validUtf8(std::string_view text);

/// Whether `text` is well-formed UTF-8. Allocates nothing.
bool isValidUtf8(std::string_view text);

/// The beginning of well-formed UTF-8 `text`, at most `count` characters (code points) long.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// `text` with the ASCII capitals in lower case and everything else as it is.
std::string asciiLowered(std::string_view text);

} // namespace quillbrook
