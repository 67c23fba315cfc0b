#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quillbrook {

/// A short text in the desktop's panel with a menu below it.
struct PanelItemContent {
    struct Entry {
        std::uint32_t id = 0;
        std::string title{}; // empty for a divider

        bool operator==(const Entry&) const = default;
    };

    std::string label{};
    bool isAlert = false; // in red, with a warning sign
    std::vector<Entry> menu{};

    bool operator==(const PanelItemContent&) const = default;
};

/// A place for such a text in the panel of a desktop that has no tray, and whether it has one.
/// Main thread only.
class PanelItem {
public:
    struct Handlers {
        std::function<void()> menuOpens{}; ///< its titles should be true now

        /// An entry was chosen. `startupId` is what the desktop gives a program that is about to
        /// show a window for it, maybe empty.
        std::function<void(std::uint32_t id, const std::string& startupId)> chosen{};
    };

    virtual ~PanelItem() = default;

    /// What is to be shown from now on, wherever the desktop gives place for it.
    virtual void show(const PanelItemContent& content) = 0;

    virtual void setHandlers(Handlers handlers) = 0;

    /// Calls `body` with whether a tray shows icons, as soon as that is known and at each change.
    virtual void followTray(std::function<void(bool isThere)> body) = 0;
};

} // namespace quillbrook
