#pragma once

#include <string>
#include <string_view>

namespace quillbrook {

/// What a window and its process tell of their application. A text that is missing is empty; all
/// are well-formed UTF-8 without blanks at the ends, which some programs leave there.
struct WindowTraits {
    std::string instance{}; // WM_CLASS
    std::string className{}; // WM_CLASS
    std::string applicationId{}; // of GTK or of Wayland
    std::string kdeDesktopFile{};
    std::string sandboxId{}; // of Flatpak or Snap
    std::string executable{}; // the last part of the program's path

    bool operator==(const WindowTraits&) const = default;
};

/// Sets instance and class from the bytes of a WM_CLASS property: two texts, each ended by a zero
/// byte. What is missing stays empty; the bytes may be anything.
void readWmClass(std::string_view bytes, WindowTraits& traits);

/// The first text of a property's bytes, up to a zero byte or the end.
std::string propertyText(std::string_view bytes);

/// Whether a window that names `clientMachine` as its program's machine is of the machine
/// `hostName`. One that names none is taken as ours.
bool isThisMachine(std::string_view clientMachine, std::string_view hostName);

/// Whether a window is a dialogue that a desktop's portal shows on behalf of some application.
bool isPortal(const WindowTraits& traits);

} // namespace quillbrook
