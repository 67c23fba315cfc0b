#include "platform/linux/appearance/KdeColors.h"
#include "platform/linux/appearance/ThemeName.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/Sandbox.h"
#include "platform/linux/bus/InputMethodNames.h"
#include "platform/linux/bus/Notifications.h"
#include "platform/linux/proc/ProcFigures.h"
#include "platform/linux/session/LayoutNames.h"
#include "platform/linux/words/OutsideName.h"
#include "tests/fuzz/FuzzInput.h"

#include <cmath>
#include <string>

namespace quillbrook {
namespace {

constexpr double kPageSize = 4096;

void requireFigures(std::initializer_list<double> figures)
{
    for (const double figure : figures) {
        require(std::isfinite(figure) && figure >= 0);
    }
}

void checkProc(std::string_view text)
{
    require(bootTimeOf(text).value_or(0) >= 0);
    if (const auto cpu = cpuTicksOf(text)) {
        requireFigures({cpu->user, cpu->system, cpu->idle, cpu->nice});
    }
    if (const auto memory = memoryOf(text, kPageSize)) {
        requireFigures({memory->activePages, memory->wiredPages, memory->compressorPages,
            memory->physicalBytes});
    }
    if (const auto swap = swapOf(text)) {
        requireFigures({swap->totalBytes, swap->usedBytes});
        require(swap->usedBytes <= swap->totalBytes);
    }
}

void checkApplications(std::string_view text)
{
    requireValid(flatpakIdIn(text));
    requireValid(snapIdIn(text));
    for (const std::string& program : programsStartedAtLogin(text)) {
        require(!program.empty());
    }
}

void checkNames(std::string_view text)
{
    const std::string name = outsideName(text);
    requireValid(name);
    require(name.size() <= 4 * 200 && name.find_first_of("\n\r\x1b") == std::string::npos);
    require(outsideName(name) == name);

    requireValid(layoutIdentifierOf(name, text));
    require(!ibusIdentifier(text).empty());
    require(!fcitxIdentifier(text, name, name).empty());
    isDoublePinyinSchema(text);
    if (const auto address = ibusAddressIn(text)) {
        require(!address->empty() && address->find('\n') == std::string::npos);
    }
}

void checkDesktop(std::string_view text)
{
    kdeAppearanceIn(text);
    if (const auto theme = themeNameIn(text)) {
        isDarkTheme(*theme);
    }
    if (const auto notification = notificationIn(text)) {
        require(withoutMarkup(notification->body).find_first_of("<>") == std::string::npos);
    }
}

} // namespace
} // namespace quillbrook

/// Whatever the files and properties of a system hold, the figures and names that come of them are
/// sound.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkProc(text);
    checkApplications(text);
    checkNames(text);
    checkDesktop(text);
    return 0;
}
