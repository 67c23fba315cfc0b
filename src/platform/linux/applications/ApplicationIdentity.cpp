#include "platform/linux/applications/ApplicationIdentity.h"

#include "base/Text.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/KnownApplications.h"
#include "platform/linux/words/OutsideName.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace quillbrook {

namespace {

/// The first of `texts` that says something, as a name.
std::string firstName(std::initializer_list<std::string_view> texts)
{
    for (const std::string_view text : texts) {
        if (std::string name = outsideName(text); !name.empty()) {
            return name;
        }
    }
    return {};
}

/// Whether an entry describes this one window of a program more closely than the program's class
/// does, as that of a web application in its browser.
bool isOfInstanceAlone(const DesktopEntry& entry, const WindowTraits& traits)
{
    const std::string instance = asciiLowered(traits.instance);
    return !instance.empty() && instance != asciiLowered(traits.className)
        && (asciiLowered(entry.startupWmClass) == instance || asciiLowered(entry.id) == instance);
}

} // namespace

RunningApplication applicationOf(const WindowTraits& traits, DesktopEntries& entries)
{
    const std::string ofClass = knownBundleIdentifier(traits.className);
    if (const DesktopEntry* entry = entries.find(traits)) {
        return {.localizedName = firstName({entry->name, traits.className, entry->id}),
            .bundleIdentifier = firstName({knownBundleIdentifier(entry->id),
                isOfInstanceAlone(*entry, traits) ? std::string() : ofClass, entry->id})};
    }
    // A window without any trait is somebody's window all the same, and its user is at work.
    return {.localizedName
        = firstName({traits.className, traits.instance, traits.executable, "未知应用"}),
        .bundleIdentifier = firstName({ofClass, knownBundleIdentifier(traits.executable),
            traits.className, traits.instance, traits.executable, "unknown"})};
}

RunningApplication desktopItself()
{
    return {.localizedName = "桌面", .bundleIdentifier = "com.apple.finder"};
}

} // namespace quillbrook
