#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// What the program's package says of itself. macOS: the main bundle's info dictionary; Linux: the
/// same keys, fixed when the program is built. Any thread.
class BundleValues {
public:
    virtual ~BundleValues() = default;

    /// The text under a key such as "CFBundleShortVersionString"; empty when there is none. The
    /// key "BuildDate" is that of the dictionary which the build leaves in the package.
    virtual std::optional<std::string> infoValue(std::string_view key) const = 0;

    /// Where the package lies, an absolute path. macOS: the main bundle's path; Linux: the
    /// program's.
    virtual std::string bundlePath() const = 0;
};

} // namespace quillbrook
