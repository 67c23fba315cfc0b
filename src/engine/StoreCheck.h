#pragma once

#include <filesystem>

namespace quillbrook {

/// Whether the file at `path` is a whole store of ours. Reads all of it. What keeps a reader out,
/// as a full disk does, says nothing against it. Any thread.
bool isStoreSound(const std::filesystem::path& path);

} // namespace quillbrook
