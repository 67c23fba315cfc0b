#pragma once

#include "platform/UserDefaults.h"

#include <QSettings>

namespace quillbrook {

/// The native settings of the user: on macOS the standard user defaults of our bundle identifier,
/// on Linux tarnlow.cn/quillbrook.conf in the configuration directory.
class QtUserDefaults final : public UserDefaults {
public:
    double doubleForKey(std::string_view key) const override;
    void setDouble(std::string_view key, double value) override;

private:
    // macOS turns the organisation around: cn.tarnlow.quillbrook.
    QSettings settings{QSettings::NativeFormat, QSettings::UserScope, "tarnlow.cn", "quillbrook"};
};

} // namespace quillbrook
