#include "pages/figures/AboutFigures.h"

#include "base/IsoTime.h"

namespace quillbrook {

namespace {

constexpr std::string_view kVersionWithoutBundle = "0.13.0";
constexpr auto kDateLength = std::string_view("2026-01-31").size();

constexpr auto kCommonTags = std::to_array<std::string_view>({"C++20", "Qt 6", "SQLite"});
constexpr auto kLinuxTags = std::to_array<std::string_view>(
    {"C++20", "Qt 6", "SQLite", "XCB", "Wayland", "D-Bus", "libcanberra"});

std::string today(const LocalCalendar& calendar)
{
    return isoTimeInZone(calendar.now, calendar.secondsFromUtc(calendar.now))
        .substr(0, kDateLength);
}

} // namespace

AboutValues aboutValues(const std::optional<std::string>& version,
    const std::optional<std::string>& buildDate, const LocalCalendar& calendar)
{
    return {.version = version.value_or(std::string(kVersionWithoutBundle)),
        .buildDate = buildDate ? *buildDate : today(calendar)};
}

std::string versionText(const AboutValues& values)
{
    return "v" + values.version;
}

std::string buildDateText(const AboutValues& values)
{
    return "构建于 " + values.buildDate;
}

Technology technologyOn(SystemKind system)
{
    switch (system) {
    case SystemKind::macOS:
        return {.line = "零第三方依赖，纯 macOS 原生", .tags = kCommonTags};
    case SystemKind::linuxDesktop:
        return {.line = "Linux 原生程序，只用发行版提供的开源库", .tags = kLinuxTags};
    }
    return {};
}

} // namespace quillbrook
