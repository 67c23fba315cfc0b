#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillbrook {

/// The application that has a person's attention.
struct ActiveApp {
    std::string bundleId{}; // empty for an application without one
    std::string appName{};

    bool operator==(const ActiveApp&) const = default;
};

/// `active`: the application; `inactive`: empty, nobody's attention is on anything.
using AttentionState = std::optional<ActiveApp>;

/// Why nobody's attention is on anything. The numbers are stored: as `idle_periods.source_type`,
/// and as `app_sessions.close_type` of the session that follows.
enum class IdleSourceType : std::uint8_t {
    hidTimeout = 1,
    sleep = 2,
    lock = 3,
    shutdown = 4, // only as a source
    startup = 5, // only as a close type
};

/// What one tick sees of the machine. Without an application that counts, both frontmost fields
/// are empty.
struct AttentionSnapshot {
    std::optional<std::string> frontmostName{};
    std::optional<std::string> frontmostBundleId{};
    bool isLocked = false;
    bool isSleeping = false;
};

} // namespace quillbrook
