#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/WindowTraits.h"
#include "platform/linux/x11/XkbLayout.h"

#include "base/Text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// Whatever a desktop file or a window property holds, the texts that come of it are well formed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto check = [](const std::string& result) {
        if (validUtf8(result) != result) {
            std::abort();
        }
    };

    if (const auto entry = parseDesktopEntry(text, {"zh_CN", "zh"})) {
        check(entry->name);
        check(entry->startupWmClass);
        check(entry->executable);
    }
    WindowTraits traits;
    readWmClass(text, traits);
    check(traits.instance);
    check(traits.className);
    check(propertyText(text));
    for (std::size_t group = 0; group < 4; ++group) {
        if (const auto identifier = xkbIdentifier(text, group)) {
            check(*identifier);
        }
    }
    for (const std::string& key : languageKeys(text)) {
        if (key.empty()) {
            std::abort();
        }
    }
    return 0;
}
