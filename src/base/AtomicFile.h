#pragma once

#include <filesystem>
#include <string_view>

namespace quillbrook {

/// Makes or replaces the file whole or not at all, wherever it is: on the older thread. False when
/// that failed.
bool writeAtomically(const std::filesystem::path& path, std::string_view text);

} // namespace quillbrook
