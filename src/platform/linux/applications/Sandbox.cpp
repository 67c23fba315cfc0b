#include "platform/linux/applications/Sandbox.h"

#include "base/OlderThread.h"
#include "base/Text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>

namespace quillbrook {

namespace {

constexpr std::size_t kMostBytes = 16384;

/// The beginning of an ordinary file. What stands there may be of the process's own making: a pipe
/// would be waited for.
std::string beginningOf(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0) {
        return {};
    }
    struct stat facts {};
    std::string text(kMostBytes, '\0');
    const bool isOrdinary = fstat(file, &facts) == 0 && S_ISREG(facts.st_mode);
    const auto count = isOrdinary ? read(file, text.data(), text.size()) : 0;
    close(file);
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return text;
}

/// Cuts the first line off `text` and returns it.
std::string_view takeLine(std::string_view& text)
{
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

/// `name` without the mark of one run at its end: "-" and a UUID, or the number of a process.
std::string_view withoutRun(std::string_view name)
{
    constexpr std::size_t kUuidLength = 36;
    const auto isOf = [](std::string_view text, std::string_view characters) {
        return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
    };
    if (name.size() > kUuidLength + 1) {
        const auto begin = name.size() - kUuidLength - 1;
        const std::string_view uuid = name.substr(begin + 1);
        if (name[begin] == '-' && isOf(uuid, "0123456789abcdef-")) {
            return name.substr(0, begin);
        }
    }
    const auto dash = name.rfind('-');
    const bool isNumbered
        = dash != std::string_view::npos && isOf(name.substr(dash + 1), "0123456789");
    return isNumbered ? name.substr(0, dash) : name;
}

} // namespace

std::string sandboxIdOf(pid_t process)
{
    const std::string folder = "/proc/" + std::to_string(process);
    // A Flatpak sees at its root who it is; no other program has this file there.
    std::string info;
    onOlderThread([&] { info = beginningOf(folder + "/root/.flatpak-info"); });
    std::string id = flatpakIdIn(info);
    return id.empty() ? snapIdIn(beginningOf(folder + "/cgroup")) : id;
}

std::string flatpakIdIn(std::string_view info)
{
    constexpr std::string_view kKey = "name=";
    bool isOfApplication = false;
    while (!info.empty()) {
        const std::string_view line = takeLine(info);
        if (line.starts_with('[')) {
            isOfApplication = line == "[Application]";
        } else if (isOfApplication && line.starts_with(kKey)) {
            return validUtf8(line.substr(kKey.size()));
        }
    }
    return {};
}

std::string snapIdIn(std::string_view groups)
{
    constexpr std::string_view kMark = "/snap.";
    while (!groups.empty()) {
        const std::string_view line = takeLine(groups);
        const auto mark = line.find(kMark);
        if (mark == std::string_view::npos) {
            continue;
        }
        // snap.NAME.APPLICATION, then a mark of this one run behind "-" or ".".
        const std::string_view rest = line.substr(mark + kMark.size());
        const auto dot = rest.find('.');
        if (dot == std::string_view::npos) {
            continue;
        }
        const std::string_view behind = rest.substr(dot + 1);
        const auto application = withoutRun(behind.substr(0, behind.find_first_of("./")));
        return validUtf8(std::string(rest.substr(0, dot)) + "_" + std::string(application));
    }
    return {};
}

} // namespace quillbrook
