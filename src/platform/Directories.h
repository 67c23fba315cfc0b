#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace quillbrook {

/// The folder of ours in the user's application support directory.
constexpr std::string_view kDataFolderName = "cn.tarnlow.quillbrook";

/// The store and the log in the folder for our data. Whoever opens them asks for them here.
inline std::filesystem::path storePath(const std::filesystem::path& dataDirectory)
{
    return dataDirectory / "monitor.db";
}
inline std::filesystem::path logPath(const std::filesystem::path& dataDirectory)
{
    return dataDirectory / "monitor.log";
}

/// Where the system keeps files of a user. Any thread.
class Directories {
public:
    virtual ~Directories() = default;

    /// The folder for our data, which need not exist yet: `kDataFolderName` in the user's
    /// application support directory; empty when the system names no such directory. macOS:
    /// ~/Library/Application Support; Linux: $XDG_DATA_HOME, else ~/.local/share.
    virtual std::optional<std::filesystem::path> dataDirectory() const = 0;
};

} // namespace quillbrook
