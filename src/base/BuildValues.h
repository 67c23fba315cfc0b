#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The program's version, such as "1.2.0".
std::string_view buildVersion();

/// The date of the sources that were built, such as "2026-01-31"; empty when they have none.
std::optional<std::string> buildDate();

} // namespace quillbrook
