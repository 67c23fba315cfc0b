#include "engine/Notifier.h"

#include "base/Text.h"
#include "engine/MonitorLog.h"
#include "platform/ChildProcess.h"

#include <algorithm>

namespace quillbrook {

namespace {

/// The script's texts stand between double quotes.
std::string withoutDoubleQuotes(std::string text)
{
    std::ranges::replace(text, '"', '\'');
    return text;
}

} // namespace

void Notifier::sendNotification(const std::string& title, const std::string& body)
{
    const std::string script = filled(R"(display notification "{}" with title "{}")",
        {withoutDoubleQuotes(body), withoutDoubleQuotes(title)});
    platform.childProcess.launch("/usr/bin/osascript", {"-e", script},
        [this, watch = lifetime.watch()](const LaunchFailure& failure) {
            if (!watch.isOver()) {
                log.log("⚠️ 通知发送失败: " + failure.description);
            }
        });
}

} // namespace quillbrook
