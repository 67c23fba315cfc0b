#include "platform/linux/Notifications.h"

#include "platform/Directories.h"
#include "platform/linux/Bus.h"
#include "platform/linux/Calls.h"
#include "platform/linux/Notice.h"
#include "platform/qt/QtText.h"

#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace quillbrook {

std::optional<NotificationTexts> notificationIn(std::string_view script)
{
    constexpr std::string_view kBegin = R"(display notification ")";
    constexpr std::string_view kMiddle = R"(" with title ")";
    constexpr std::string_view kEnd = R"(")";
    if (!script.starts_with(kBegin)) {
        return std::nullopt;
    }
    script.remove_prefix(kBegin.size());
    // The texts hold no double quotes.
    const auto middle = script.find(kMiddle);
    if (middle == std::string_view::npos || !script.ends_with(kEnd)
        || script.size() < middle + kMiddle.size() + kEnd.size()) {
        return std::nullopt;
    }
    const std::string_view body = script.substr(0, middle);
    script.remove_prefix(middle + kMiddle.size());
    script.remove_suffix(kEnd.size());
    return NotificationTexts{.title = std::string(script), .body = std::string(body)};
}

std::string withoutMarkup(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

bool Notifications::isPossible() const
{
    return sessionBus.isThere();
}

void Notifications::notify(const NotificationTexts& texts)
{
    constexpr uint kReplacesNothing = 0;
    constexpr int kServersTimeout = -1;
    const QString ourId = toQString(kDataFolderName);
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    // A higher urgency than the normal 1 would stay on the screen until it is dismissed.
    call.setArguments({QStringLiteral("Quillbrook"), kReplacesNothing, ourId,
        toQString(texts.title), toQString(withoutMarkup(texts.body)), QStringList(),
        QVariantMap{{QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)},
            {QStringLiteral("desktop-entry"), ourId}},
        kServersTimeout});
    callLater(sessionBus.connection(), call, this, [](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            notice("通知发送失败: " + reply.errorMessage().toStdString());
        }
    });
}

} // namespace quillbrook
