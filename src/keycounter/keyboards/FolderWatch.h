#pragma once

#include "keycounter/keyboards/FileDescriptor.h"

#include <string>
#include <vector>

namespace quillbrook {

/// Tells what changes in a folder, which may be missing and come later in its own folder. Nothing
/// runs meanwhile.
class FolderWatch {
public:
    /// What happened to a file of the folder.
    struct Change {
        enum class Kind {
            appeared, ///< or may be opened by others now
            vanished,
            unknown ///< to the whole folder, which has to be looked through
        };

        Kind kind = Kind::unknown;
        std::string name{}; // of the file
    };

    explicit FolderWatch(std::string folder);

    /// Becomes readable when there is a change to take.
    int descriptor() const { return notifications.get(); }

    /// What has changed since the last time.
    std::vector<Change> takeChanges();

private:
    bool watchFolder();
    void watchParent();

    std::string folder;
    FileDescriptor notifications;
    int folderWatch = -1;
    int parentWatch = -1;
};

} // namespace quillbrook
