#include "platform/linux/session/Toplevels.h"

#include "base/Text.h"

namespace quillbrook {

namespace {

constexpr std::size_t kMostBytes = 4096;

} // namespace

void Toplevels::setAppId(Window window, std::string_view appId)
{
    windows[window].pending.appId = validUtf8(appId.substr(0, kMostBytes));
}

void Toplevels::setActivated(Window window, bool isActivated)
{
    windows[window].pending.isActivated = isActivated;
}

bool Toplevels::commit(Window window)
{
    Entry& entry = windows[window];
    if (entry.present == entry.pending) {
        return false;
    }
    if (entry.present.isActivated != entry.pending.isActivated) {
        std::erase(activated, window);
        if (entry.pending.isActivated) {
            activated.push_back(window);
        }
    }
    entry.present = entry.pending;
    return true;
}

bool Toplevels::close(Window window)
{
    std::erase(activated, window);
    return windows.erase(window) > 0;
}

void Toplevels::clear()
{
    windows.clear();
    activated.clear();
}

const std::string* Toplevels::activeAppId() const
{
    return activated.empty() ? nullptr : &windows.at(activated.back()).present.appId;
}

} // namespace quillbrook
