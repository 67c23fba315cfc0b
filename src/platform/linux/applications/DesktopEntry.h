#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// What a desktop entry says of an application. Texts are well-formed UTF-8.
struct DesktopEntry {
    std::string id{}; // the file's, without ".desktop"
    std::string name{}; // in the user's language where the entry has it
    std::string startupWmClass{}; // empty when there is none
    std::string executable{}; // the last part of the program's path, empty when there is none
    bool isShown = true; // in menus
};

/// The keys of a language in the order in which they are sought: "zh_CN", "zh" for "zh_CN.UTF-8".
/// Empty for "C", "POSIX" and nothing.
std::vector<std::string> languageKeys(std::string_view localeName);

/// The programs that must be there for a desktop to start what the text of an autostart entry
/// describes, as paths or as names to be sought in $PATH. Empty when it starts nothing.
std::vector<std::string> programsStartedAtLogin(std::string_view text);

/// The application that the text of a desktop entry describes, `id` left empty. Empty when it
/// describes none, or one that is hidden. The text may hold anything.
std::optional<DesktopEntry> parseDesktopEntry(
    std::string_view text, const std::vector<std::string>& languages);

} // namespace quillbrook
