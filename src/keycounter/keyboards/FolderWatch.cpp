#include "keycounter/keyboards/FolderWatch.h"

#include <sys/inotify.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::uint32_t kComing = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kGoing = IN_DELETE | IN_MOVED_FROM;

std::string parentOf(const std::string& folder)
{
    const auto parent = std::filesystem::path(folder).parent_path();
    return parent.empty() ? "." : parent.string();
}

std::string nameIn(const std::byte* record, std::uint32_t size)
{
    const auto* name = reinterpret_cast<const char*>(record + sizeof(inotify_event));
    return {name, strnlen(name, size)};
}

} // namespace

FolderWatch::FolderWatch(std::string folder)
    : folder(std::move(folder))
    , notifications(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (!watchFolder()) {
        watchParent();
    }
}

bool FolderWatch::watchFolder()
{
    folderWatch = inotify_add_watch(
        notifications.get(), folder.c_str(), kComing | kGoing | IN_ATTRIB | IN_ONLYDIR);
    if (folderWatch >= 0 && parentWatch >= 0) {
        inotify_rm_watch(notifications.get(), parentWatch);
        parentWatch = -1;
    }
    return folderWatch >= 0;
}

void FolderWatch::watchParent()
{
    parentWatch
        = inotify_add_watch(notifications.get(), parentOf(folder).c_str(), kComing | IN_ONLYDIR);
    watchFolder(); // it may have come meanwhile
}

std::vector<FolderWatch::Change> FolderWatch::takeChanges()
{
    std::vector<Change> changes;
    alignas(inotify_event) std::array<std::byte, 4096> bytes{};
    const ssize_t size = read(notifications.get(), bytes.data(), bytes.size());
    std::size_t at = 0;
    while (at + sizeof(inotify_event) <= static_cast<std::size_t>(size < 0 ? 0 : size)) {
        inotify_event event{};
        std::memcpy(&event, bytes.data() + at, sizeof event);
        const std::string name = nameIn(bytes.data() + at, event.len);
        at += sizeof event + event.len;

        if ((event.mask & IN_Q_OVERFLOW) != 0) {
            changes.push_back({});
        } else if (event.wd == parentWatch) {
            if (watchFolder()) {
                changes.push_back({});
            }
        } else if (event.wd != folderWatch) {
            continue; // of a watch that was given up
        } else if ((event.mask & IN_IGNORED) != 0) {
            watchParent();
            changes.push_back({});
        } else {
            const bool isGone = (event.mask & kGoing) != 0;
            changes.push_back(
                {.kind = isGone ? Change::Kind::vanished : Change::Kind::appeared, .name = name});
        }
    }
    return changes;
}

} // namespace quillbrook
