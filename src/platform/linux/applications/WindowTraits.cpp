#include "platform/linux/applications/WindowTraits.h"

#include "base/Text.h"
#include "platform/linux/words/OutsideName.h"

namespace quillbrook {

std::string propertyText(std::string_view bytes)
{
    return validUtf8(withoutOuterBlanks(bytes.substr(0, bytes.find('\0'))));
}

void readWmClass(std::string_view bytes, WindowTraits& traits)
{
    traits.instance = propertyText(bytes);
    const auto zero = bytes.find('\0');
    traits.className
        = zero != std::string_view::npos ? propertyText(bytes.substr(zero + 1)) : std::string();
}

bool isThisMachine(std::string_view clientMachine, std::string_view hostName)
{
    // One of the two may have the network's name behind it.
    const auto isLongerForm = [](std::string_view longer, std::string_view shorter) {
        return longer.size() > shorter.size() && longer.starts_with(shorter)
            && longer[shorter.size()] == '.';
    };
    return clientMachine.empty() || clientMachine == hostName
        || (!hostName.empty()
            && (isLongerForm(clientMachine, hostName) || isLongerForm(hostName, clientMachine)));
}

bool isPortal(const WindowTraits& traits)
{
    const auto isPortals = [](const std::string& name) {
        const std::string lowered = asciiLowered(name);
        return lowered.starts_with("xdg-desktop-portal")
            || lowered.starts_with("org.freedesktop.impl.portal.desktop");
    };
    return isPortals(traits.className) || isPortals(traits.instance)
        || isPortals(traits.applicationId) || isPortals(traits.kdeDesktopFile)
        || isPortals(traits.executable);
}

} // namespace quillbrook
