#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace quillbrook {

/// The folder of ours in the user's application support directory.
constexpr std::string_view kDataFolderName = "cn.tarnlow.quillbrook";

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
