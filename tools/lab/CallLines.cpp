#include "lab/CallLines.h"

#include "base/Text.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillbrook::lab {

namespace {

QByteArray jsonArray(const std::vector<std::string>& texts)
{
    QJsonArray array;
    for (const std::string& text : texts) {
        array.append(QString::fromStdString(text));
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QByteArray jsonText(const std::string& text)
{
    const QByteArray list = jsonArray({text});
    return list.mid(1, list.size() - 2);
}

QByteArray jsonBool(bool value)
{
    return value ? "true" : "false";
}

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
