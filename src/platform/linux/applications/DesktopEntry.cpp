#include "platform/linux/applications/DesktopEntry.h"

#include "base/Text.h"

#include <algorithm>
#include <map>

namespace quillbrook {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r";
    const auto begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

/// The keys of the group [Desktop Entry], each with its first value. Other groups, which repeat
/// keys for single actions, don't count.
std::map<std::string_view, std::string_view> entryKeys(std::string_view text)
{
    std::map<std::string_view, std::string_view> keys;
    bool isInside = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('[')) {
            isInside = line == "[Desktop Entry]";
        }
        const auto equals = line.find('=');
        if (isInside && !line.starts_with('#') && equals != std::string_view::npos) {
            keys.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
    return keys;
}

/// A value with its escapes resolved.
std::string unescaped(std::string_view value)
{
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        ++i;
        switch (value[i]) {
        case 's':
        case 'n':
        case 't':
        case 'r':
            text += ' ';
            break;
        default:
            text += value[i];
        }
    }
    return text;
}

/// The words of a command line, in double quotes or not. In quotes a backslash keeps the character
/// behind it, and two percent signs are one.
std::vector<std::string> words(std::string_view commandLine)
{
    std::vector<std::string> found;
    std::string word;
    bool isQuoted = false;
    bool isWord = false;
    for (std::size_t i = 0; i < commandLine.size(); ++i) {
        const char c = commandLine[i];
        const char next = i + 1 < commandLine.size() ? commandLine[i + 1] : '\0';
        if ((isQuoted && c == '\\' && next != '\0') || (c == '%' && next == '%')) {
            word += next;
            isWord = true;
            ++i;
        } else if (c == '"') {
            isQuoted = !isQuoted;
            isWord = true;
        } else if (c == ' ' && !isQuoted) {
            if (isWord) {
                found.push_back(word);
            }
            word.clear();
            isWord = false;
        } else {
            word += c;
            isWord = true;
        }
    }
    if (isWord) {
        found.push_back(word);
    }
    return found;
}

std::string baseName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// The path or name of the program that a command line runs; `env` and its assignments are looked
/// through.
std::string programOf(std::string_view commandLine)
{
    const auto line = words(commandLine);
    auto word = line.begin();
    if (word != line.end() && baseName(*word) == "env") {
        ++word;
        word = std::find_if(word, line.end(),
            [](const std::string& part) { return part.find('=') == std::string::npos; });
    }
    return word != line.end() ? *word : std::string();
}

} // namespace

std::vector<std::string> languageKeys(std::string_view localeName)
{
    const std::string_view language = localeName.substr(0, localeName.find_first_of(".@"));
    if (language.empty() || language == "C" || language == "POSIX") {
        return {};
    }
    std::vector<std::string> keys{std::string(language)};
    const auto underscore = language.find('_');
    if (underscore != std::string_view::npos && underscore > 0) {
        keys.emplace_back(language.substr(0, underscore));
    }
    return keys;
}

std::vector<std::string> programsStartedAtLogin(std::string_view text)
{
    const auto keys = entryKeys(text);
    const auto value = [&keys](std::string_view key) {
        const auto found = keys.find(key);
        return found != keys.end() ? unescaped(found->second) : std::string();
    };
    const std::string program = programOf(value("Exec"));
    if (program.empty() || value("Hidden") == "true"
        || value("X-GNOME-Autostart-enabled") == "false") {
        return {};
    }
    const std::string tried = value("TryExec");
    return tried.empty() ? std::vector{program} : std::vector{program, tried};
}

std::optional<DesktopEntry> parseDesktopEntry(
    std::string_view text, const std::vector<std::string>& languages)
{
    const auto keys = entryKeys(text);
    const auto value = [&keys](std::string_view key) {
        const auto found = keys.find(key);
        return found != keys.end() ? validUtf8(unescaped(found->second)) : std::string();
    };
    if (value("Type") != "Application" || value("Hidden") == "true") {
        return std::nullopt;
    }
    DesktopEntry entry{.name = value("Name"),
        .startupWmClass = value("StartupWMClass"),
        .executable = baseName(programOf(value("Exec"))),
        .isShown = value("NoDisplay") != "true"};
    for (const std::string& language : languages) {
        if (const std::string name = value("Name[" + language + "]"); !name.empty()) {
            entry.name = name;
            break;
        }
    }
    if (entry.name.empty()) {
        return std::nullopt;
    }
    return entry;
}

} // namespace quillbrook
