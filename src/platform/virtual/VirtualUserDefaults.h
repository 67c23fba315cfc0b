#pragma once

#include "platform/UserDefaults.h"

#include <cstdint>
#include <map>
#include <string>
#include <variant>

namespace quillbrook {

/// Settings in memory.
class VirtualUserDefaults final : public UserDefaults {
public:
    using Value = std::variant<bool, double, std::string>;
    using Values = std::map<std::string, Value, std::less<>>;

    double doubleForKey(std::string_view key) const override;
    void setDouble(std::string_view key, double value) override;
    bool boolForKey(std::string_view key) const override;
    void setBool(std::string_view key, bool value) override;
    std::string stringForKey(std::string_view key) const override;
    void setString(std::string_view key, const std::string& value) override;
    std::int64_t integerForKey(std::string_view key) const override;
    void setInteger(std::string_view key, std::int64_t value) override;

    const Values& all() const { return values; }
    void set(std::string_view key, Value value);

private:
    Values values{};
};

} // namespace quillbrook
