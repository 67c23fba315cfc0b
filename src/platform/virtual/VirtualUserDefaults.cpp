#include "platform/virtual/VirtualUserDefaults.h"

#include <charconv>
#include <utility>

namespace quillbrook {

namespace {

double numberOf(bool value)
{
    return value ? 1 : 0;
}

double numberOf(double value)
{
    return value;
}

double numberOf(const std::string& text)
{
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

double VirtualUserDefaults::doubleForKey(std::string_view key) const
{
    const auto found = values.find(key);
    if (found == values.end()) {
        return 0;
    }
    return std::visit([](const auto& value) { return numberOf(value); }, found->second);
}

void VirtualUserDefaults::setDouble(std::string_view key, double value)
{
    set(key, value);
}

void VirtualUserDefaults::set(std::string_view key, Value value)
{
    values.insert_or_assign(std::string(key), std::move(value));
}

} // namespace quillbrook
