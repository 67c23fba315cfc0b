#pragma once

#include "platform/UserDefaults.h"

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

    const Values& all() const { return values; }
    void set(std::string_view key, Value value);

private:
    Values values{};
};

} // namespace quillbrook
