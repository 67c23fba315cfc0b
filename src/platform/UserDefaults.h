#pragma once

#include <string>
#include <string_view>

namespace quillbrook {

/// The user's persistent settings. macOS: the standard user defaults; Linux: an INI file of
/// QSettings in the configuration directory. A value is stored when the call returns or soon
/// after, and before the process ends in order. Main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The number under `key`, 0 when there is none.
    virtual double doubleForKey(std::string_view key) const = 0;

    virtual void setDouble(std::string_view key, double value) = 0;
};

} // namespace quillbrook
