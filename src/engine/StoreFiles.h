#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>

namespace quillbrook {

/// What has become of an open store's files since they were looked at last.
enum class StoreFilesState : std::uint8_t {
    untouched,
    touched, // the store, or its shortened log, was written to by somebody else
    logLost, // the store is there, but the log or its index is another file, or none
    replaced, // another file stands in the store's place
    gone,
};

/// The files of the open store: the store itself, SQLite's log beside it and the log's index.
///
/// An open file stays open when somebody removes it or puts another in its place, and what is
/// written to it then is lost without an error. So it is told by device and inode whether the files
/// are still those at the path. Looking opens nothing: closing a file drops SQLite's locks on it.
class StoreFiles {
public:
    /// Takes the files at the path, as they are now, for those that are open.
    void remember(const std::filesystem::path& dbPath);

    /// From here on there are none, and nothing becomes of them.
    void forget() { store.reset(); }

    /// Takes what has changed in them for our own doing. To be called behind each write.
    void noteOwnWrite();

    StoreFilesState look() const;

    /// Lets the log and its index be written to by those who may write to the store. SQLite makes
    /// them as read-only as the store is at that moment.
    void letLogBeWritten() const;

    /// Renames the store, and its log, to a name beside it with the date and time of UTC+8 that no
    /// file has yet. The new path; empty when that can't be done.
    std::optional<std::filesystem::path> setAside(double now);

    /// Removes what a store that is no longer there has left beside its place.
    void removeRests();

private:
    struct Look {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        std::int64_t writtenAtNs = 0;

        bool isSameFile(const Look& other) const
        {
            return device == other.device && inode == other.inode;
        }
    };

    static std::optional<Look> lookAt(const std::filesystem::path& path);

    std::filesystem::path path{};
    std::filesystem::path logPath{};
    std::filesystem::path indexPath{};
    std::optional<Look> store{}; // empty while none is open
    std::optional<Look> log{}; // as long as it has not been seen, there may be none
    std::optional<Look> index{};
};

} // namespace quillbrook
