#pragma once

#include "base/SystemKind.h"

#include <optional>
#include <string>

namespace quillbrook {

/// The number of a release of the operating system.
struct OsVersion {
    int major = 0;
    int minor = 0;
    int patch = 0;
};

/// What computer the program runs on. Texts are well-formed UTF-8. Main thread only.
class HostFacts {
public:
    virtual ~HostFacts() = default;

    virtual SystemKind system() const = 0;

    /// macOS: `operatingSystemVersion`; Linux: the kernel's release.
    virtual OsVersion osVersion() const = 0;

    /// The system in words. macOS: `operatingSystemVersionString`; Linux: the distribution with the
    /// kernel's release.
    virtual std::string osVersionText() const = 0;

    /// The computer's name in the network; empty when it has none.
    virtual std::optional<std::string> hostName() const = 0;
};

} // namespace quillbrook
