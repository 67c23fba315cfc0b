#pragma once

#include "base/Lifetime.h"
#include "platform/Platform.h"

#include <string>

namespace quillbrook {

class MonitorLog;

/// Shows the system's notifications, through its scripting tool: that needs no permission.
class Notifier {
public:
    Notifier(const Platform& platform, MonitorLog& log) : platform(platform), log(log) {}

    /// Asks for a notification and does not wait for it. A tool that can't be launched is a log
    /// line, at once or when that shows.
    void sendNotification(const std::string& title, const std::string& body);

private:
    Platform platform;
    MonitorLog& log;

    Lifetime lifetime{};
};

} // namespace quillbrook
