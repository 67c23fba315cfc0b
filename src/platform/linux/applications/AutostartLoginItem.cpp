#include "platform/linux/applications/AutostartLoginItem.h"

#include "base/AtomicFile.h"
#include "base/OlderThread.h"
#include "platform/linux/applications/DesktopEntry.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kEntryName = "cn.tarnlow.quillbrook.desktop";

/// An entry has a few lines; what is longer is none of ours and is cut.
constexpr std::size_t kMostBytes = 65536;

std::optional<std::string> textOf(const fs::path& path)
{
    std::error_code failure;
    if (!fs::is_regular_file(path, failure)) {
        return std::nullopt;
    }
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    std::string text(kMostBytes, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

/// `program` as an argument of an Exec line: always in double quotes, which takes any path.
std::string quotedArgument(std::string_view program)
{
    std::string quoted = "\"";
    for (const char c : program) {
        if (c == '"' || c == '`' || c == '$') {
            quoted += "\\\\"; // a backslash for the quotes, doubled for the file
        } else if (c == '\\') {
            quoted += R"(\\\)";
        } else if (c == '%') {
            quoted += '%';
        }
        quoted += c;
    }
    return quoted + '"';
}

std::optional<std::string> environmentValue(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::optional<std::string>(value) : std::nullopt;
}

std::vector<fs::path> pathsIn(std::string_view list)
{
    std::vector<fs::path> paths;
    while (!list.empty()) {
        const auto end = std::min(list.find(':'), list.size());
        if (const fs::path path = list.substr(0, end); path.is_absolute()) {
            paths.push_back(path);
        }
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return paths;
}

bool isProgram(const fs::path& path)
{
    std::error_code failure;
    return fs::is_regular_file(path, failure) && access(path.c_str(), X_OK) == 0;
}

/// Whether a path or a name to be sought in $PATH leads to a program.
bool leadsToProgram(const std::string& program)
{
    if (program.find('/') != std::string::npos) {
        return isProgram(program);
    }
    const auto directories = pathsIn(environmentValue("PATH").value_or("/usr/bin:/bin"));
    return std::ranges::any_of(
        directories, [&](const fs::path& directory) { return isProgram(directory / program); });
}

} // namespace

AutostartLoginItem::AutostartLoginItem(const fs::path& userDirectory,
    const std::vector<fs::path>& systemDirectories, std::string program)
    : userEntry(userDirectory / "autostart" / kEntryName)
    , program(std::move(program))
{
    for (const fs::path& directory : systemDirectories) {
        systemEntries.push_back(directory / "autostart" / kEntryName);
    }
}

AutostartLoginItem AutostartLoginItem::ofThisUser(std::string program)
{
    const fs::path home = environmentValue("HOME").value_or("/");
    const fs::path configured = environmentValue("XDG_CONFIG_HOME").value_or("");
    return {configured.is_absolute() ? configured : home / ".config",
        pathsIn(environmentValue("XDG_CONFIG_DIRS").value_or("/etc/xdg")), std::move(program)};
}

bool AutostartLoginItem::isEnabled() const
{
    // The first entry of the name counts, and hides those after it.
    std::optional<std::string> text = textOf(userEntry);
    for (auto entry = systemEntries.begin(); !text && entry != systemEntries.end(); ++entry) {
        text = textOf(*entry);
    }
    if (!text) {
        return false;
    }
    const auto programs = programsStartedAtLogin(*text);
    return !programs.empty() && std::ranges::all_of(programs, leadsToProgram);
}

std::optional<LoginItemFailure> AutostartLoginItem::enable()
{
    if (std::ranges::any_of(program, [](char c) { return c == '\n' || c == '\r'; })) {
        return LoginItemFailure{"an entry can't hold a path of several lines"};
    }
    return writeUserEntry("[Desktop Entry]\nType=Application\nName=Quillbrook\nExec="
        + quotedArgument(program) + "\nIcon=cn.tarnlow.quillbrook\n");
}

std::optional<LoginItemFailure> AutostartLoginItem::disable()
{
    if (hasSystemEntry()) {
        return writeUserEntry("[Desktop Entry]\nType=Application\nName=Quillbrook\nHidden=true\n");
    }
    std::error_code failure;
    onOlderThread([&] { fs::remove(userEntry, failure); });
    return failure ? std::optional(LoginItemFailure{userEntry.string() + ": " + failure.message()})
                   : std::nullopt;
}

std::optional<LoginItemFailure> AutostartLoginItem::writeUserEntry(const std::string& text) const
{
    std::error_code failure;
    onOlderThread([&] { fs::create_directories(userEntry.parent_path(), failure); });
    if (failure) {
        return LoginItemFailure{userEntry.parent_path().string() + ": " + failure.message()};
    }
    if (!writeAtomically(userEntry, text)) {
        return LoginItemFailure{userEntry.string() + ": cannot be written"};
    }
    return std::nullopt;
}

bool AutostartLoginItem::hasSystemEntry() const
{
    return std::ranges::any_of(
        systemEntries, [](const fs::path& entry) { return textOf(entry).has_value(); });
}

} // namespace quillbrook
