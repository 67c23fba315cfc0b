#include "platform/linux/LinuxBundleValues.h"

#include "base/BuildValues.h"
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
        return std::string(buildVersion());
    }
    if (key == "BuildDate") {
        return buildDate();
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
