#include "platform/linux/applications/DesktopEntries.h"

#include "base/Text.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxFileBytes = 1 << 20; // of a file only the beginning is read
constexpr std::size_t kMaxEntries = 20'000;
constexpr int kMaxDepth = 4;
constexpr std::array<std::string_view, 10> kInterpreters
    = {"python", "java", "perl", "ruby", "node", "bash", "sh", "flatpak", "snap", "wine"};

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Whether a program runs others, so that its name, with a version or without, tells nothing of
/// what it runs.
bool isInterpreter(const std::string& program)
{
    return std::ranges::any_of(kInterpreters, [&](std::string_view interpreter) {
        constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz";
        return program.starts_with(interpreter)
            && (program.size() == interpreter.size()
                || kLetters.find(program[interpreter.size()]) == std::string_view::npos);
    });
}

std::string beginningOf(const fs::path& path)
{
    std::error_code failure;
    const auto size = fs::file_size(path, failure);
    std::string text(failure ? 0 : std::min<std::size_t>(size, kMaxFileBytes), '\0');
    std::ifstream stream(path, std::ios::binary);
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

} // namespace

std::vector<fs::path> DesktopEntries::standardDirectories()
{
    std::string dataHome = environment("XDG_DATA_HOME");
    if (dataHome.empty()) {
        dataHome = environment("HOME") + "/.local/share";
    }
    std::string dataDirs = environment("XDG_DATA_DIRS");
    if (dataDirs.empty()) {
        dataDirs = "/usr/local/share:/usr/share";
    }
    std::vector<fs::path> found{fs::path(dataHome) / "applications"};
    std::string_view rest = dataDirs;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (end > 0) {
            found.push_back(fs::path(rest.substr(0, end)) / "applications");
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return found;
}

DesktopEntries::DesktopEntries(
    std::vector<fs::path> searchedDirectories, std::vector<std::string> languages)
    : directories(std::move(searchedDirectories))
    , languages(std::move(languages))
{
    QObject::connect(
        &watcher, &QFileSystemWatcher::directoryChanged, &watcher, [this] { isStale = true; });
}

const DesktopEntry* DesktopEntries::find(const WindowTraits& traits)
{
    if (isStale) {
        readAll();
    }
    // What a window says of its entry comes first, then what entries say of their windows, then
    // the name under which the program is installed, then likeness of names, and at the very last
    // the program that runs. The instance comes before the class: the web applications of a browser
    // have their own entries and the browser's class.
    for (const std::string* id : {&traits.kdeDesktopFile, &traits.applicationId}) {
        if (const auto* entry = first(byId, *id)) {
            return entry;
        }
    }
    for (const Index* index : {&byWmClass, &byId}) {
        for (const std::string* text : {&traits.instance, &traits.className}) {
            const bool tellsNothing = text == &traits.instance && isInterpreter(*text);
            const auto* entry = tellsNothing ? nullptr : first(*index, *text);
            if (entry != nullptr) {
                return entry;
            }
        }
    }
    if (const auto* entry = first(byId, traits.sandboxId)) {
        return entry;
    }
    if (const auto* entry = only(byLastPart, traits.className, false)) {
        return entry;
    }
    return isInterpreter(traits.executable) ? nullptr : only(byExecutable, traits.executable, true);
}

const DesktopEntry* DesktopEntries::first(const Index& index, const std::string& text) const
{
    const auto found = index.find(asciiLowered(text));
    return !text.empty() && found != index.end() ? &entries[found->second.front()] : nullptr;
}

const DesktopEntry* DesktopEntries::only(
    const Index& index, const std::string& text, bool onlyShown) const
{
    const auto found = index.find(asciiLowered(text));
    if (text.empty() || found == index.end()) {
        return nullptr;
    }
    const DesktopEntry* single = nullptr;
    for (const std::size_t position : found->second) {
        if (onlyShown && !entries[position].isShown) {
            continue;
        }
        if (single != nullptr) {
            return nullptr;
        }
        single = &entries[position];
    }
    return single;
}

void DesktopEntries::readAll()
{
    entries.clear();
    knownIds.clear();
    for (Index* index : {&byId, &byLastPart, &byWmClass, &byExecutable}) {
        index->clear();
    }
    if (!watcher.directories().isEmpty()) {
        watcher.removePaths(watcher.directories());
    }
    isStale = false;
    std::set<fs::path> visited;
    for (const fs::path& directory : directories) {
        readDirectory(directory, "", 0, visited);
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const DesktopEntry& entry = entries[i];
        byId[asciiLowered(entry.id)].push_back(i);
        byLastPart[asciiLowered(entry.id.substr(entry.id.rfind('.') + 1))].push_back(i);
        byWmClass[asciiLowered(entry.startupWmClass)].push_back(i);
        byExecutable[asciiLowered(entry.executable)].push_back(i);
    }
}

// As deep as the folders, with a bound.
// NOLINTNEXTLINE(misc-no-recursion)
void DesktopEntries::readDirectory(
    const fs::path& directory, const std::string& idPrefix, int depth, std::set<fs::path>& visited)
{
    std::error_code failure;
    const fs::path canonical = fs::canonical(directory, failure);
    if (failure) {
        watcher.addPath(QString::fromStdString(directory.parent_path().string()));
        return; // to be made later, maybe
    }
    if (depth > kMaxDepth || !visited.insert(canonical).second) {
        return; // links that lead in a circle end here
    }
    watcher.addPath(QString::fromStdString(canonical.string()));
    std::vector<fs::path> paths;
    for (fs::directory_iterator item(canonical, failure), end; !failure && item != end;
         item.increment(failure)) {
        paths.push_back(item->path());
    }
    std::ranges::sort(paths);
    for (const fs::path& path : paths) {
        const std::string name = path.filename().string();
        if (fs::is_directory(path, failure)) {
            readDirectory(path, idPrefix + name + "-", depth + 1, visited);
        } else if (path.extension() == ".desktop" && fs::is_regular_file(path, failure)) {
            readFile(path, validUtf8(idPrefix + path.stem().string()));
        }
    }
}

void DesktopEntries::readFile(const fs::path& path, const std::string& id)
{
    if (entries.size() >= kMaxEntries || !knownIds.insert(id).second) {
        return;
    }
    if (auto entry = parseDesktopEntry(beginningOf(path), languages)) {
        entry->id = id;
        entries.push_back(std::move(*entry));
    }
}

} // namespace quillbrook
