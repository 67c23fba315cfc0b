#include "platform/linux/shells/SwayJson.h"

#include "base/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <vector>

namespace quillbrook {

namespace {

constexpr int kMostCharacters = 4096;

QJsonDocument documentOf(const std::string& json)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(json));
}

std::string textOf(const QJsonValue& value)
{
    return validUtf8(value.toString().left(kMostCharacters).toStdString());
}

/// A window's container; that of a workspace has neither an application's id nor a class.
std::optional<FrontWindow> windowOf(const QJsonObject& container)
{
    const QJsonObject x11 = container["window_properties"].toObject();
    if (container["pid"].toInt() <= 0) {
        return std::nullopt;
    }
    const std::string appId = textOf(container["app_id"]);
    FrontWindow window{.process = container["pid"].toInt()};
    window.traits.applicationId = appId;
    window.traits.className = x11.isEmpty() ? appId : textOf(x11["class"]);
    window.traits.instance = textOf(x11["instance"]);
    return window;
}

std::optional<std::string> layoutOf(const QJsonObject& input)
{
    std::string layout = textOf(input["xkb_active_layout_name"]);
    return input["type"] == "keyboard" && !layout.empty() ? std::optional(std::move(layout))
                                                          : std::nullopt;
}

} // namespace

std::optional<FrontWindow> focusedWindowOfEvent(const std::string& json)
{
    const QJsonObject event = documentOf(json).object();
    return event["change"] == "focus" ? windowOf(event["container"].toObject()) : std::nullopt;
}

std::optional<FrontWindow> focusedWindowOfTree(const std::string& json)
{
    std::vector<QJsonObject> open{documentOf(json).object()};
    while (!open.empty()) {
        const QJsonObject node = open.back();
        open.pop_back();
        if (node["focused"].toBool()) {
            return windowOf(node);
        }
        for (const auto* kind : {"nodes", "floating_nodes"}) {
            for (const auto& child : node[QLatin1String(kind)].toArray()) {
                open.push_back(child.toObject());
            }
        }
    }
    return std::nullopt;
}

std::optional<std::string> layoutOfEvent(const std::string& json)
{
    return layoutOf(documentOf(json).object()["input"].toObject());
}

std::optional<std::string> layoutOfInputs(const std::string& json)
{
    for (const auto& input : documentOf(json).array()) {
        if (auto layout = layoutOf(input.toObject())) {
            return layout;
        }
    }
    return std::nullopt;
}

bool isDone(const std::string& json)
{
    const QJsonArray results = documentOf(json).array();
    for (const auto& result : results) {
        if (!result.toObject()["success"].toBool()) {
            return false;
        }
    }
    return !results.isEmpty();
}

} // namespace quillbrook
