#include "lab/ScenarioValues.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>

namespace quillbrook::lab {

namespace {

using Form = bool (*)(const QJsonValue&);

bool isNumber(const QJsonValue& value)
{
    return value.isDouble() && std::isfinite(value.toDouble());
}

bool isAmount(const QJsonValue& value)
{
    return isNumber(value) && value.toDouble() >= 0;
}

bool isWhole(const QJsonValue& value)
{
    constexpr double kExactLimit = 9007199254740992.0; // 2^53
    return isNumber(value) && std::abs(value.toDouble()) <= kExactLimit
        && value.toDouble() == std::floor(value.toDouble());
}

bool isCount(const QJsonValue& value)
{
    return isWhole(value) && value.toDouble() >= 0;
}

bool isWholeOrNull(const QJsonValue& value)
{
    return value.isNull() || isWhole(value);
}

bool isTextOrNull(const QJsonValue& value)
{
    return value.isNull() || value.isString();
}

bool isBool(const QJsonValue& value)
{
    return value.isBool();
}

bool isTrue(const QJsonValue& value)
{
    return value.isBool() && value.toBool();
}

bool isObject(const QJsonValue& value)
{
    return value.isObject();
}

bool isOutcome(const QJsonValue& value)
{
    return value == "ok" || value == "fail";
}

bool isExitStatus(const QJsonValue& value)
{
    return isWhole(value) || value == "missing";
}

bool isEngineCall(const QJsonValue& value)
{
    return value == "start" || value == "stop" || value == "crash";
}

bool isNotification(const QJsonValue& value)
{
    return value == "screensDidSleep" || value == "screensDidWake" || value == "willSleep"
        || value == "didWake";
}

/// An object with just these members, all of the same form.
bool isRecord(const QJsonValue& value, const QStringList& members, Form memberForm)
{
    const QJsonObject object = value.toObject();
    return value.isObject() && object.size() == members.size()
        && std::ranges::all_of(members, [&](const QString& member) {
               return object.contains(member) && memberForm(object[member]);
           });
}

bool isListOf(qsizetype size, const QJsonValue& value)
{
    const QJsonArray list = value.toArray();
    return value.isArray() && list.size() == size
        && std::all_of(
            list.begin(), list.end(), [](const QJsonValue& item) { return isNumber(item); });
}

bool isFront(const QJsonValue& value)
{
    return value.isNull() || isRecord(value, {"name", "bundle"}, &isTextOrNull);
}

bool isLoad(const QJsonValue& value)
{
    return isListOf(3, value);
}

bool isCpuTicks(const QJsonValue& value)
{
    return value.isNull() || isListOf(4, value);
}

bool isMemory(const QJsonValue& value)
{
    return value.isNull()
        || isRecord(value, {"active", "wired", "compressor", "pageSize", "physical"}, &isAmount);
}

bool isSwap(const QJsonValue& value)
{
    return value.isNull() || isRecord(value, {"total", "used"}, &isAmount);
}

/// Members that only the header has.
const std::map<QString, Form>& headerForms()
{
    static const std::map<QString, Form> kForms = {
        {"clock", &isNumber},
        {"defaults", &isObject},
        {"pid", &isWhole},
    };
    return kForms;
}

/// Members that the header has, and events that replace their values.
const std::map<QString, Form>& settingForms()
{
    static const std::map<QString, Form> kForms = {
        {"bootTime", &isWholeOrNull},
        {"trusted", &isBool},
        {"monitor", &isOutcome},
        {"tap", &isOutcome},
        {"inputSource", &isTextOrNull},
        {"instances", &isWhole},
        {"front", &isFront},
        {"tccutil", &isExitStatus},
        {"osascript", &isExitStatus},
        {"load", &isLoad},
        {"cpuTicks", &isCpuTicks},
        {"memory", &isMemory},
        {"swap", &isSwap},
        {"processBytes", &isAmount},
        {"windowServer", &isTextOrNull},
    };
    return kForms;
}

/// What only happens.
const std::map<QString, Form>& eventForms()
{
    static const std::map<QString, Form> kForms = {
        {"engine", &isEngineCall},
        {"input", &isAmount},
        {"keys", &isCount},
        {"notify", &isNotification},
        {"suspend", &isAmount},
        {"end", &isTrue},
    };
    return kForms;
}

} // namespace

bool isHeaderMember(const QString& name)
{
    return headerForms().contains(name) || settingForms().contains(name);
}

bool isEvent(const QString& name)
{
    return eventForms().contains(name) || settingForms().contains(name);
}

bool hasRightForm(const QString& name, const QJsonValue& value)
{
    for (const auto* forms : {&headerForms(), &settingForms(), &eventForms()}) {
        if (const auto form = forms->find(name); form != forms->end()) {
            return form->second(value);
        }
    }
    return false;
}

} // namespace quillbrook::lab
