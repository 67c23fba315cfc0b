#pragma once

#include <string>
#include <string_view>

namespace quillbrook {

/// A name that somebody else gave, fit to be stored and logged: well-formed UTF-8 of one line and
/// at most 200 characters, without blanks at its ends. Control characters and the separators of
/// lines become blanks, so that no name forges a line of the log or moves a terminal's cursor.
std::string outsideName(std::string_view bytes);

/// `text` without the ASCII blanks and line breaks at its ends.
std::string_view withoutOuterBlanks(std::string_view text);

} // namespace quillbrook
