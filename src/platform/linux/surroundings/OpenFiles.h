#pragma once

namespace quillbrook {

/// How many files the program may have to keep open: half as many are open with all its windows.
constexpr int kNeededFiles = 64;

/// Whether this process may open `kNeededFiles`; a limit below that is raised where the system lets
/// it be. Else one notice: threads, fonts and the store itself would fail one by one.
bool mayOpenEnoughFiles();

} // namespace quillbrook
