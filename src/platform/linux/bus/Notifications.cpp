#include "platform/linux/bus/Notifications.h"

#include "platform/Directories.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/qt/QtText.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace quillbrook {

namespace {

/// What a service says of its failure, short and without what would begin a line of its own.
std::string inOneLine(QString text)
{
    constexpr int kMaxLength = 200;
    text.truncate(kMaxLength);
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control
            || character.category() == QChar::Separator_Line
            || character.category() == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return text.toStdString();
}

} // namespace

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

Notifications::Notifications(Bus& sessionBus) : sessionBus(sessionBus)
{
    qDBusRegisterMetaType<NotificationIcon>();
}

void Notifications::notify(const NotificationTexts& texts, FailureHandler failed)
{
    sessionBus.whenKnown(
        [this, watch = lifetime.watch(), texts, failed = std::move(failed)](bool isThere) {
            if (watch.isOver()) {
                return;
            }
            if (isThere) {
                send(texts, failed);
            } else {
                failed("没有会话总线");
            }
        });
}

void Notifications::send(const NotificationTexts& texts, FailureHandler failed)
{
    constexpr uint kReplacesNothing = 0;
    constexpr int kServersTimeout = -1;
    const QString ourId = toQString(kDataFolderName);
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    // A higher urgency than the normal 1 would stay on the screen until it is dismissed.
    QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)},
        {QStringLiteral("desktop-entry"), ourId}};
    if (!icon.pixels.isEmpty()) {
        // The name alone finds an icon only where the program is installed.
        hints.insert(QStringLiteral("image-data"), QVariant::fromValue(icon));
    }
    call.setArguments(
        {QStringLiteral("Quillbrook"), kReplacesNothing, ourId, toQString(texts.title),
            toQString(withoutMarkup(texts.body)), QStringList(), hints, kServersTimeout});
    callLater(
        sessionBus.connection(), call, this,
        [failed = std::move(failed)](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                failed(inOneLine(reply.errorMessage()));
            }
        },
        StartsService::yes);
}

} // namespace quillbrook
