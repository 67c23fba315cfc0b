#pragma once

#include "platform/Workspace.h"
#include "platform/linux/session/FrontSource.h"

#include <functional>
#include <optional>
#include <vector>

namespace quillbrook {

class DesktopEntries;

/// The application in front by the first of several sources that is there.
///
/// Between two windows there may be none for some milliseconds: the last one is held for half a
/// second. A front that stays empty, or that nobody knows, is none. Events only take note; names
/// are looked up when somebody asks, so that a thousand switches cost no more than one. Main thread
/// only.
class SessionFront {
public:
    /// `now` is a clock in seconds that never goes back.
    SessionFront(DesktopEntries& entries, std::function<double()> now);

    SessionFront(const SessionFront&) = delete;
    SessionFront& operator=(const SessionFront&) = delete;

    /// Adds a source, asked after those before it.
    void add(const FrontSource& source) { sources.push_back(&source); }

    /// To be called after each change of a source.
    void sourceChanged();

    /// Whether any source is there.
    bool isKnown() const { return presentSource() != nullptr; }

    /// The application; empty when none is in front or nobody knows.
    std::optional<RunningApplication> current();

private:
    const FrontSource* presentSource() const;
    void identify();

    DesktopEntries& entries;
    std::function<double()> now;
    std::vector<const FrontSource*> sources{};
    std::optional<FrontWindow> last{}; // that was in front
    std::optional<double> emptySince = 0;
    std::optional<FrontWindow> identified{}; // whose application is the one below
    std::optional<RunningApplication> application{};
};

} // namespace quillbrook
