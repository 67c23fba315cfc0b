#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quillbrook {

/// A Linux application whose kind the category rules should know.
struct KnownApplication {
    std::string_view linuxId; // of its desktop entry, or its window class; in lower case
    std::string_view bundleIdentifier;
};

/// All of them, by `linuxId`.
///
/// A program that exists on both systems has its own identifier there. Any other has that of a
/// program of the same kind, with a part of its own behind it, by which two of a kind are told
/// apart: the rules compare beginnings.
std::span<const KnownApplication> knownApplications();

/// The bundle identifier of an application by its Linux id, capitals and small letters alike;
/// empty when it isn't known. Ids that carry a version or a game's number behind their name are
/// known by the name.
std::string knownBundleIdentifier(std::string_view linuxId);

} // namespace quillbrook
