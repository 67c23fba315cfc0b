#include "platform/linux/LinuxBundleValues.h"

#include "platform/Directories.h"

#include <filesystem>
#include <system_error>

namespace quillbrook {

std::optional<std::string> LinuxBundleValues::infoValue(std::string_view key) const
{
    if (key == "CFBundleIdentifier") {
        return std::string(kDataFolderName);
    }
    if (key == "CFBundleShortVersionString" || key == "CFBundleVersion") {
        return QUILLBROOK_VERSION;
    }
    return std::nullopt;
}

std::string LinuxBundleValues::bundlePath() const
{
    std::error_code failure;
    const auto path = std::filesystem::read_symlink("/proc/self/exe", failure);
    return failure ? std::string() : path.string();
}

} // namespace quillbrook
