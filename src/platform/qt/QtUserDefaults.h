#pragma once

#include "platform/UserDefaults.h"

#include <QSettings>
#include <QVariant>

#include <filesystem>

namespace quillbrook {

/// The native settings of the user: on macOS the standard user defaults of our bundle identifier,
/// on Linux tarnlow.cn/quillbrook.conf in the configuration directory.
class QtUserDefaults final : public UserDefaults {
public:
    double doubleForKey(std::string_view key) const override;
    void setDouble(std::string_view key, double value) override;
    bool boolForKey(std::string_view key) const override;
    void setBool(std::string_view key, bool value) override;
    std::string stringForKey(std::string_view key) const override;
    void setString(std::string_view key, const std::string& value) override;
    std::int64_t integerForKey(std::string_view key) const override;
    void setInteger(std::string_view key, std::int64_t value) override;

    /// The directory that holds the settings' file.
    std::filesystem::path directory() const;

private:
    void set(std::string_view key, const QVariant& value);

    // macOS turns the organisation around: cn.tarnlow.quillbrook.
    QSettings settings{QSettings::NativeFormat, QSettings::UserScope, "tarnlow.cn", "quillbrook"};
};

} // namespace quillbrook
