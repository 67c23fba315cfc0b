#pragma once

#include <filesystem>

namespace quillbrook {

/// Lets SQLite make, open and remove files in `folder` also when somebody has put another folder in
/// its place: the kernel's rules hold the folder that was there when they were made, and refuse
/// what is in another of the same name. Such files are opened on the older thread. Once, with the
/// folder there.
void openStoresInReplaced(const std::filesystem::path& folder);

} // namespace quillbrook
