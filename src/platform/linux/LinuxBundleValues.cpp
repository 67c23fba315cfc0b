#include "platform/linux/LinuxBundleValues.h"

#include "platform/Directories.h"

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

} // namespace quillbrook
