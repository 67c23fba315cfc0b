#include "platform/linux/surroundings/BaseDirectories.h"

#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace quillbrook {

namespace {

constexpr const char* kHome = "HOME";

/// Nothing can be made in it, where "/" would take in the files of a user without a home.
constexpr const char* kNoHome = "/dev/null";

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isAbsolute(std::string_view path)
{
    return path.starts_with('/');
}

void ignoreRelative(const char* variable)
{
    const std::string path = environment(variable);
    if (path.empty() || isAbsolute(path)) {
        return;
    }
    notice(std::string(variable) + " 不是绝对路径，不使用它: " + outsideName(path));
    unsetenv(variable);
}

void ignoreRelativeIn(const char* variable)
{
    const std::string list = environment(variable);
    std::string kept;
    for (std::size_t begin = 0; begin < list.size();) {
        const auto end = std::min(list.find(':', begin), list.size());
        const auto path = std::string_view(list).substr(begin, end - begin);
        if (isAbsolute(path)) {
            kept += kept.empty() ? "" : ":";
            kept += path;
        }
        begin = end + 1;
    }
    if (kept == list) {
        return;
    }
    notice(std::string(variable) + " 中有不是绝对路径的目录，不使用它们: " + outsideName(list));
    if (kept.empty()) {
        unsetenv(variable);
    } else {
        setenv(variable, kept.c_str(), 1);
    }
}

void nameHome()
{
    if (isAbsolute(environment(kHome))) {
        return;
    }
    const passwd* account = getpwuid(getuid());
    const bool hasHome = account != nullptr && isAbsolute(account->pw_dir);
    const std::string home = hasHome ? account->pw_dir : kNoHome;
    notice(hasHome ? "环境变量 HOME 没有给出主目录，使用帐户的 " + home : "没有主目录");
    setenv(kHome, home.c_str(), 1);
}

} // namespace

void putDirectoriesRight()
{
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
             "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        ignoreRelative(variable);
    }
    for (const char* variable : {"XDG_DATA_DIRS", "XDG_CONFIG_DIRS"}) {
        ignoreRelativeIn(variable);
    }
    nameHome();
}

} // namespace quillbrook
