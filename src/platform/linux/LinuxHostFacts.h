#pragma once

#include "platform/HostFacts.h"

#include <string_view>

namespace quillbrook {

/// The numbers at the beginning of a kernel's release, such as "6.1.0-13-amd64"; those that are
/// missing are 0.
OsVersion kernelVersion(std::string_view release);

/// What the kernel and the distribution say of themselves.
class LinuxHostFacts final : public HostFacts {
public:
    SystemKind system() const override { return SystemKind::linuxDesktop; }
    OsVersion osVersion() const override;
    std::string osVersionText() const override;
    std::optional<std::string> hostName() const override;
};

} // namespace quillbrook
