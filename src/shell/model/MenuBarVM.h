#pragma once

#include "base/Lifetime.h"
#include "base/Property.h"
#include "platform/Platform.h"

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// What a click on an entry of the menu in the tray, or of a window's menu, does.
enum class MenuAction : std::uint8_t {
    showAlerts,
    showToday,
    showKeylog,
    refresh,
    showAbout,
    toggleLoginItem,
    quit,
};

struct MenuEntry {
    MenuAction action = MenuAction::refresh;
    std::string title{};

    bool operator==(const MenuEntry&) const = default;
};

/// The figures behind the menu bar: today's active time, alerts and tokens, read from the store
/// every five minutes, and every minute while something needs attention. It opens the store for
/// itself, for one refresh at a time, and only to read. Main thread only.
class MenuBarVM {
public:
    /// Reads the store once, and from now on by itself.
    explicit MenuBarVM(const Platform& platform);

    /// Reads all figures anew. When the store can't be opened everything stays as it was.
    void refreshStats();

    /// Switches the start at login on or off; a failure is a line on standard output.
    void toggleLoginItem();

    /// `tokenCount` in the form of the user's language.
    std::string tokenCountStr() const;

    /// Whether there is something to look at: an alert of today or a missing permission.
    bool isWarning() const;

    /// Whether the refresh of every minute is on.
    bool isFastRefreshing() const { return fastRefreshTimer.has_value(); }

    /// The menu from top to bottom, an empty place for a divider.
    std::vector<std::optional<MenuEntry>> menu() const;

    Property<std::string> activeHoursStr{"--"};
    Property<std::int64_t> alertCount{0};
    Property<std::int64_t> tokenCount{0};
    Property<bool> permissionMissing{false};
    Property<double> yearProgressPct{0}; // a fraction of 1; no view reads it

private:
    static double statsDouble(std::string_view sql, sqlite3* connection);
    void updateYearProgress();
    void adjustFastTimer();
    void scheduleFastRefresh();
    const std::filesystem::path& dbPath();

    Platform platform;
    std::optional<std::filesystem::path> path{};
    std::optional<Lifetime> fastRefreshTimer{}; // of the timer's present run
    Lifetime lifetime{};
};

} // namespace quillbrook
