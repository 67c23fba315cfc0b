#pragma once

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/WindowTraits.h"

#include <QFileSystemWatcher>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quillbrook {

/// The applications that are installed for the user, by their desktop entries. Read at the first
/// question, and again after one of the directories changed; at rest nothing runs. Main thread
/// only.
class DesktopEntries {
public:
    /// Where the entries of the user and of the system lie, the first wins: `applications` in
    /// $XDG_DATA_HOME, then in each of $XDG_DATA_DIRS.
    static std::vector<std::filesystem::path> standardDirectories();

    /// `languages` as `languageKeys` gives them.
    DesktopEntries(
        std::vector<std::filesystem::path> directories, std::vector<std::string> languages);

    /// The application of a window, null when no entry fits. Valid until the next call.
    const DesktopEntry* find(const WindowTraits& traits);

private:
    using Index = std::map<std::string, std::vector<std::size_t>>; // folded text to entries

    void readAll();
    void readDirectory(const std::filesystem::path& directory, const std::string& idPrefix,
        int depth, std::set<std::filesystem::path>& visited);
    void readFile(const std::filesystem::path& path, const std::string& id);
    const DesktopEntry* first(const Index& index, const std::string& text) const;
    const DesktopEntry* only(const Index& index, const std::string& text, bool onlyShown) const;

    std::vector<std::filesystem::path> directories;
    std::vector<std::string> languages;
    bool isStale = true;
    std::vector<DesktopEntry> entries{};
    std::set<std::string> knownIds{}; // hidden ones too: they hide those of later directories
    Index byId{};
    Index byLastPart{}; // of a dotted id
    Index byWmClass{};
    Index byExecutable{};
    QFileSystemWatcher watcher{};
};

} // namespace quillbrook
