#pragma once

#include <filesystem>
#include <string_view>

namespace quillbrook {

/// Makes or replaces the file whole or not at all. False when that failed.
bool writeAtomically(const std::filesystem::path& path, std::string_view text);

} // namespace quillbrook
