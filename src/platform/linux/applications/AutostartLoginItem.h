#pragma once

#include "platform/LoginItem.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillbrook {

/// An entry in the autostart folders of the desktops, which all read the same files.
class AutostartLoginItem final : public LoginItem {
public:
    /// `userDirectory` and `systemDirectories`, the most important first, are folders that hold
    /// autostart folders; `program` is the absolute path of what is to be started.
    AutostartLoginItem(const std::filesystem::path& userDirectory,
        const std::vector<std::filesystem::path>& systemDirectories, std::string program);

    /// With the folders of this user: $XDG_CONFIG_HOME, else ~/.config, and $XDG_CONFIG_DIRS, else
    /// /etc/xdg.
    static AutostartLoginItem ofThisUser(std::string program);

    bool isEnabled() const override;
    std::optional<LoginItemFailure> enable() override;
    std::optional<LoginItemFailure> disable() override;

private:
    std::optional<LoginItemFailure> writeUserEntry(const std::string& text) const;
    bool hasSystemEntry() const;

    std::filesystem::path userEntry;
    std::vector<std::filesystem::path> systemEntries{};
    std::string program;
};

} // namespace quillbrook
