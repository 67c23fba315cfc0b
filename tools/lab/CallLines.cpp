#include "lab/CallLines.h"

#include "base/Text.h"
#include "lab/JsonText.h"

namespace quillbrook::lab {

namespace {

QByteArray members(const LaunchCall& call)
{
    return "\"launch\":" + jsonText(call.path) + ",\"args\":" + jsonArray(call.arguments)
        + ",\"wait\":" + jsonBool(call.isWaitedFor);
}

QByteArray members(const PromptCall&)
{
    return R"("prompt":"accessibility")";
}

QByteArray members(const TapEnableCall& call)
{
    return "\"tapEnable\":" + jsonBool(call.isOn);
}

bool isSnapshotLine(const OutsideCall& call)
{
    const auto* launch = std::get_if<LaunchCall>(&call.what);
    return launch != nullptr && launch->path == "/bin/bash";
}

} // namespace

QByteArray callLines(const std::vector<OutsideCall>& calls)
{
    QByteArray lines;
    for (const OutsideCall& call : calls) {
        if (!isSnapshotLine(call)) {
            lines += "{\"at\":" + QByteArray::fromStdString(shortestText(call.at)) + ","
                + std::visit([](const auto& what) { return members(what); }, call.what) + "}\n";
        }
    }
    return lines;
}

} // namespace quillbrook::lab
