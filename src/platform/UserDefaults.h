#pragma once

#include <cstdint>
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

    /// The truth under `key`, false when there is none.
    virtual bool boolForKey(std::string_view key) const = 0;

    virtual void setBool(std::string_view key, bool value) = 0;

    /// The text under `key`, empty when there is none.
    virtual std::string stringForKey(std::string_view key) const = 0;

    virtual void setString(std::string_view key, const std::string& value) = 0;

    /// The whole number under `key`, its fraction cut off, 0 when there is none.
    virtual std::int64_t integerForKey(std::string_view key) const = 0;

    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
};

} // namespace quillbrook
