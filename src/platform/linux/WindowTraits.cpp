#include "platform/linux/WindowTraits.h"

#include "base/Text.h"

namespace quillbrook {

std::string propertyText(std::string_view bytes)
{
    return validUtf8(bytes.substr(0, bytes.find('\0')));
}

void readWmClass(std::string_view bytes, WindowTraits& traits)
{
    traits.instance = propertyText(bytes);
    const auto zero = bytes.find('\0');
    traits.className
        = zero != std::string_view::npos ? propertyText(bytes.substr(zero + 1)) : std::string();
}

} // namespace quillbrook
