#include "platform/virtual/VirtualUserDefaults.h"

#include "base/WholeNumber.h"

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

bool VirtualUserDefaults::boolForKey(std::string_view key) const
{
    return doubleForKey(key) != 0;
}

void VirtualUserDefaults::setBool(std::string_view key, bool value)
{
    set(key, value);
}

std::string VirtualUserDefaults::stringForKey(std::string_view key) const
{
    const auto found = values.find(key);
    const auto* text = found == values.end() ? nullptr : std::get_if<std::string>(&found->second);
    return text != nullptr ? *text : std::string();
}

void VirtualUserDefaults::setString(std::string_view key, const std::string& value)
{
    set(key, value);
}

std::int64_t VirtualUserDefaults::integerForKey(std::string_view key) const
{
    return wholeNumber(doubleForKey(key));
}

void VirtualUserDefaults::setInteger(std::string_view key, std::int64_t value)
{
    set(key, static_cast<double>(value));
}

void VirtualUserDefaults::set(std::string_view key, Value value)
{
    values.insert_or_assign(std::string(key), std::move(value));
}

} // namespace quillbrook
