#include "platform/linux/LinuxHostFacts.h"

#include <QString>
#include <QSysInfo>

#include <array>
#include <charconv>

namespace quillbrook {

OsVersion kernelVersion(std::string_view release)
{
    std::array<int, 3> numbers{};
    const char* position = release.data();
    const char* end = position + release.size();
    for (int& number : numbers) {
        const auto read = std::from_chars(position, end, number);
        if (read.ec != std::errc() || read.ptr == end || *read.ptr != '.') {
            break;
        }
        position = read.ptr + 1;
    }
    return {.major = numbers[0], .minor = numbers[1], .patch = numbers[2]};
}

OsVersion LinuxHostFacts::osVersion() const
{
    return kernelVersion(QSysInfo::kernelVersion().toStdString());
}

std::string LinuxHostFacts::osVersionText() const
{
    return (QSysInfo::prettyProductName() + QStringLiteral(", Linux ") + QSysInfo::kernelVersion())
        .toStdString();
}

std::optional<std::string> LinuxHostFacts::hostName() const
{
    const QString name = QSysInfo::machineHostName();
    return name.isEmpty() ? std::nullopt : std::optional(name.toStdString());
}

} // namespace quillbrook
