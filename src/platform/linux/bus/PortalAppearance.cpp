#include "platform/linux/bus/PortalAppearance.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusArgument>
#include <QDBusServiceWatcher>
#include <QPointer>

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

} // namespace

std::optional<Color> accentColorIn(const QVariant& value)
{
    const QVariant plain = unwrapped(value);
    if (!plain.canConvert<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = plain.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)") {
        return std::nullopt;
    }
    std::array<double, 3> parts{};
    argument.beginStructure();
    argument >> parts[0] >> parts[1] >> parts[2];
    argument.endStructure();
    // Numbers that are not from 0 to 1 mean that there is none.
    const bool isInside = std::all_of(
        parts.begin(), parts.end(), [](double part) { return part >= 0 && part <= 1; });
    const auto byte
        = [](double part) { return static_cast<std::uint8_t>(std::lround(part * 255)); };
    return isInside ? std::optional(Color{byte(parts[0]), byte(parts[1]), byte(parts[2])})
                    : std::nullopt;
}

PortalAppearance::PortalAppearance(Bus& sessionBus, std::function<void()> changed)
    : sessionBus(sessionBus)
    , changed(std::move(changed))
{
    sessionBus.whenThere([self = QPointer<PortalAppearance>(this)](const QDBusConnection& bus) {
        if (self) {
            self->listen(bus);
        }
    });
}

PortalAppearance::~PortalAppearance() = default;

void PortalAppearance::listen(const QDBusConnection& bus)
{
    auto connection = bus;
    connection.connect(QString(), kPath, kSettings, QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    comings = std::make_unique<QDBusServiceWatcher>(
        kPortal, connection, QDBusServiceWatcher::WatchForRegistration);
    connect(
        comings.get(), &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::askAll);
    askAll();
}

void PortalAppearance::askAll()
{
    ask(kColorScheme);
    ask(kAccentColor);
}

void PortalAppearance::ask(const QString& key)
{
    auto call = QDBusMessage::createMethodCall(kPortal, kPath, kSettings, QStringLiteral("Read"));
    call << kSpace << key;
    ++openQuestions;
    callLater(
        sessionBus.connection(), call, this,
        [this, key](const QDBusMessage& reply) {
            --openQuestions;
            if (reply.type() == QDBusMessage::ReplyMessage) {
                take(key, reply.arguments().value(0));
            }
            changed();
        },
        StartsService::yes);
}

void PortalAppearance::settingChanged(
    const QString& space, const QString& key, const QDBusVariant& value)
{
    if (space == kSpace) {
        take(key, value.variant());
        changed();
    }
}

void PortalAppearance::take(const QString& key, const QVariant& value)
{
    if (key == kColorScheme) {
        const uint scheme = unwrapped(value).toUInt(); // 0: no preference, 1: dark, 2: light
        told.isDark = scheme == 0 ? std::nullopt : std::optional(scheme == 1);
    } else if (key == kAccentColor) {
        told.accent = accentColorIn(value);
    }
}

} // namespace quillbrook
