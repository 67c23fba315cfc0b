#include "platform/linux/session/SessionFront.h"

#include "platform/linux/applications/ApplicationIdentity.h"
#include "platform/linux/applications/Sandbox.h"
#include "platform/linux/proc/Processes.h"

#include <utility>

namespace quillbrook {

namespace {

constexpr double kHoldSec = 0.5;

std::string lastPart(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// The traits of a window with those that its process tells.
WindowTraits allTraits(const FrontWindow& window)
{
    WindowTraits traits = window.traits;
    if (window.process > 0) {
        traits.executable = lastPart(executableOf(window.process));
        traits.sandboxId = sandboxIdOf(window.process);
    }
    return traits;
}

} // namespace

SessionFront::SessionFront(DesktopEntries& entries, std::function<double()> now)
    : entries(entries)
    , now(std::move(now))
{
}

void SessionFront::sourceChanged()
{
    const FrontSource* source = presentSource();
    auto window = source != nullptr ? source->front() : std::nullopt;
    if (window) {
        last = std::move(window);
        emptySince.reset();
    } else if (!emptySince) {
        emptySince = now();
    }
}

std::optional<RunningApplication> SessionFront::current()
{
    if (!last || (emptySince && now() - *emptySince >= kHoldSec)) {
        last.reset();
        return std::nullopt;
    }
    if (last != identified) {
        identify();
    }
    return application;
}

void SessionFront::identify()
{
    identified = last;
    const WindowTraits traits = allTraits(*last);
    if (!application || !isPortal(traits)) {
        application = applicationOf(traits, entries);
    } // else it serves the application that asked for it, the one before
}

const FrontSource* SessionFront::presentSource() const
{
    for (const FrontSource* source : sources) {
        if (source->isThere()) {
            return source;
        }
    }
    return nullptr;
}

} // namespace quillbrook
