#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// The windows of a desktop and which of them has the keys, from what a compositor tells of each:
/// changes, and then that they are complete.
class Toplevels {
public:
    using Window = std::uintptr_t;

    /// A window's application id, of any bytes and length; only its beginning is kept.
    void setAppId(Window window, std::string_view appId);

    void setActivated(Window window, bool isActivated);

    /// What was told of the window since the last time holds from now on. False when nothing that
    /// matters changed.
    bool commit(Window window);

    /// The window is no more. False when it was unknown.
    bool close(Window window);

    void clear();

    /// The application id of the window that got the keys last; null when none has them.
    const std::string* activeAppId() const;

private:
    struct State {
        std::string appId{};
        bool isActivated = false;

        bool operator==(const State&) const = default;
    };
    struct Entry {
        State pending{};
        State present{};
    };

    std::map<Window, Entry> windows{};
    std::vector<Window> activated{}; // each seat may have one; in the order of their getting it
};

} // namespace quillbrook
