#include "platform/linux/appearance/ThemeName.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quillbrook {

namespace {

/// Reads from the front of bytes that may end too early.
class Reader {
public:
    Reader(std::string_view bytes, bool isBigEndian) : rest(bytes), isBigEndian(isBigEndian) {}

    std::optional<std::string_view> bytes(std::size_t count)
    {
        if (count > rest.size()) {
            return std::nullopt;
        }
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(count);
        return taken;
    }

    /// A text of so many bytes, which is filled up to a whole number of words.
    std::optional<std::string_view> text(std::size_t length)
    {
        const auto padded = bytes(length + (4 - length % 4) % 4);
        return padded ? std::optional(padded->substr(0, length)) : std::nullopt;
    }

    template <typename Number>
    std::optional<Number> number()
    {
        const auto taken = bytes(sizeof(Number));
        if (!taken) {
            return std::nullopt;
        }
        std::array<char, sizeof(Number)> digits{};
        std::ranges::copy(*taken, digits.begin());
        if (!isBigEndian) {
            std::ranges::reverse(digits);
        }
        std::uint32_t value = 0;
        for (const char digit : digits) {
            value = value << 8 | static_cast<std::uint8_t>(digit);
        }
        return static_cast<Number>(value);
    }

private:
    std::string_view rest;
    bool isBigEndian;
};

enum class SettingType : std::uint8_t { integer, text, color };

struct Setting {
    std::string_view name{};
    std::optional<std::string_view> text{};
};

std::optional<Setting> nextSetting(Reader& reader)
{
    const auto type = reader.number<std::uint8_t>();
    reader.bytes(1);
    const auto nameLength = reader.number<std::uint16_t>();
    const auto name = nameLength ? reader.text(*nameLength) : std::nullopt;
    const auto serial = reader.number<std::uint32_t>();
    if (!type || !name || !serial) {
        return std::nullopt;
    }
    switch (static_cast<SettingType>(*type)) {
    case SettingType::integer:
        return reader.bytes(4) ? std::optional(Setting{.name = *name}) : std::nullopt;
    case SettingType::color:
        return reader.bytes(8) ? std::optional(Setting{.name = *name}) : std::nullopt;
    case SettingType::text: {
        const auto length = reader.number<std::uint32_t>();
        const auto text = length ? reader.text(*length) : std::nullopt;
        return text ? std::optional(Setting{.name = *name, .text = text}) : std::nullopt;
    }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> themeNameIn(std::string_view settings)
{
    constexpr char kBigEndian = 1;
    constexpr std::size_t kOrderAndSerial = 8;
    if (settings.size() < kOrderAndSerial) {
        return std::nullopt;
    }
    Reader reader(settings.substr(kOrderAndSerial), settings.front() == kBigEndian);
    const auto count = reader.number<std::uint32_t>().value_or(0);
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto setting = nextSetting(reader);
        if (!setting) {
            return std::nullopt;
        }
        if (setting->name == "Net/ThemeName" && setting->text) {
            return std::string(*setting->text);
        }
    }
    return std::nullopt;
}

bool isDarkTheme(std::string_view name)
{
    const std::string lowered = asciiLowered(name);
    std::string_view rest = lowered;
    while (true) {
        const auto end = rest.find_first_of("-_:. ");
        if (rest.substr(0, end) == "dark") {
            return true;
        }
        if (end == std::string_view::npos) {
            return false;
        }
        rest.remove_prefix(end + 1);
    }
}

} // namespace quillbrook
