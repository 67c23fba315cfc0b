#pragma once

#include "platform/Platform.h"

#include <functional>
#include <memory>

class QImage;

namespace quillbrook {

/// Lets the toolkit show its windows on the Wayland compositor where the session has one, as it
/// would otherwise not on every desktop, else on the X server; a compositor that is named and not
/// there is one notice. A choice of the user's stands. To be called before the application object
/// is made.
void preferNativeWindows();

/// The Linux desktop of the user. What is missing of it, a display, a bus or a service, is one
/// notice, and all the rest goes on. Needs a QCoreApplication; main thread only.
class LinuxPlatform {
public:
    /// `willShutDown` runs when the machine is about to go down, which waits for it.
    explicit LinuxPlatform(std::function<void()> willShutDown);
    ~LinuxPlatform();

    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    Platform platform();

    /// Runs `body` as soon as a tray may be asked for, which is at once unless it keeps silent.
    void whenTrayAnswers(std::function<void()> body);

    /// Runs `body` each time that the session bus is there.
    void whenSessionBusIsThere(std::function<void()> body);

    /// The picture beside the program's notifications.
    void setIcon(const QImage& picture);

private:
    struct Parts;

    std::unique_ptr<Parts> parts;
};

} // namespace quillbrook
