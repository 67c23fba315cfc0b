#pragma once

#include <filesystem>
#include <system_error>

namespace quillbrook {

/// Why nothing can be written in a directory, which need not exist yet: then the nearest one above
/// it that does is asked. None when something can. Leaves nothing behind.
std::error_code writingFault(std::filesystem::path directory);

/// One notice where nothing can be written in the directory of the records or in that of the
/// settings, which tells why and what is lost by it.
void tellWritingFaults(
    const std::filesystem::path& dataDirectory, const std::filesystem::path& settingsDirectory);

} // namespace quillbrook
