#pragma once

#include <sys/types.h>

#include <filesystem>

namespace quillbrook {

/// From here on what the process makes is its owner's alone, whatever it was started with. Once,
/// before any thread.
void makeFilesPrivate();

/// While it lives, files are made as the person's own settings have it: who saves something in a
/// place of their own choice says there who may read it. Main thread only.
class UsualFileModes {
public:
    UsualFileModes();
    ~UsualFileModes();

    UsualFileModes(const UsualFileModes&) = delete;
    UsualFileModes& operator=(const UsualFileModes&) = delete;

private:
    mode_t before;
};

/// Takes from everybody but its owner all rights to a folder of ours and to what is in it, at any
/// depth. Follows no link below the folder, and leaves alone what belongs to others; a failure
/// leaves the rest to be done.
void takeFromOthers(const std::filesystem::path& folder);

} // namespace quillbrook
