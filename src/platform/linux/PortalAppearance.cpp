#include "platform/linux/PortalAppearance.h"

#include "platform/linux/BusConnecting.h"
#include "platform/linux/Calls.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/XcbReply.h"

#include <QDBusArgument>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

const auto kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const auto kSpace = QStringLiteral("org.freedesktop.appearance");
const auto kColorScheme = QStringLiteral("color-scheme");
const auto kAccentColor = QStringLiteral("accent-color");

/// The value within any number of variants.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

/// The portal's colour: three numbers from 0 to 1; others mean that there is none.
std::optional<Color> colorOf(const QVariant& value)
{
    if (!value.canConvert<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)") {
        return std::nullopt;
    }
    std::array<double, 3> parts{};
    argument.beginStructure();
    argument >> parts[0] >> parts[1] >> parts[2];
    argument.endStructure();
    const bool isInside = std::all_of(
        parts.begin(), parts.end(), [](double part) { return part >= 0 && part <= 1; });
    const auto byte
        = [](double part) { return static_cast<std::uint8_t>(std::lround(part * 255)); };
    return isInside ? std::optional(Color{byte(parts[0]), byte(parts[1]), byte(parts[2])})
                    : std::nullopt;
}

} // namespace

bool PortalAppearance::canBlendWindows() const
{
    if (!x11.isUsable()) {
        return true;
    }
    const auto cookie = xcb_get_selection_owner(x11.get(), x11.atom("_NET_WM_CM_S0"));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x11.get(), cookie, nullptr));
    x11.drain();
    return reply && reply->owner != XCB_NONE;
}

Subscription PortalAppearance::observe(std::function<void(const Appearance&)> changed)
{
    if (!std::exchange(isConnected, true)) {
        connectToPortal();
    }
    changed(appearance.get());
    return appearance.observe(std::move(changed));
}

void PortalAppearance::connectToPortal()
{
    if (sessionBusAddress().isEmpty()) {
        return;
    }
    QDBusConnection::sessionBus().connect(QString(), kPath, kSettings,
        QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(kColorScheme);
    ask(kAccentColor);
}

void PortalAppearance::ask(const QString& key)
{
    auto call = QDBusMessage::createMethodCall(kPortal, kPath, kSettings, QStringLiteral("Read"));
    call << kSpace << key;
    callLater(QDBusConnection::sessionBus(), call, this, [this, key](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            take(key, reply.arguments().value(0));
        }
    });
}

void PortalAppearance::settingChanged(
    const QString& space, const QString& key, const QDBusVariant& value)
{
    if (space == kSpace) {
        take(key, value.variant());
    }
}

void PortalAppearance::take(const QString& key, const QVariant& value)
{
    const QVariant plain = unwrapped(value);
    Appearance next = appearance.get();
    if (key == kColorScheme) {
        const uint scheme = plain.toUInt(); // 0: no preference, 1: dark, 2: light
        next.isDark = scheme == 0 ? std::nullopt : std::optional(scheme == 1);
    } else if (key == kAccentColor) {
        next.accent = colorOf(plain);
    } else {
        return;
    }
    appearance.set(next);
}

} // namespace quillbrook
