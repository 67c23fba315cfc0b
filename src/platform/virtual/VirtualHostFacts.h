#pragma once

#include "platform/HostFacts.h"

#include <utility>

namespace quillbrook {

/// A computer with a fixed version of its system, and a name that can be taken away.
class VirtualHostFacts final : public HostFacts {
public:
    SystemKind system() const override { return kind; }
    OsVersion osVersion() const override { return {.major = 14, .minor = 2, .patch = 1}; }
    std::string osVersionText() const override { return "Version 14.2.1"; }
    std::optional<std::string> hostName() const override { return name; }

    void setSystem(SystemKind newKind) { kind = newKind; }
    void setHostName(std::optional<std::string> newName) { name = std::move(newName); }

private:
    SystemKind kind = SystemKind::macOS;
    std::optional<std::string> name = "desk.local";
};

} // namespace quillbrook
