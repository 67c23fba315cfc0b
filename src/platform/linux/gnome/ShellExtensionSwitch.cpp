#include "platform/linux/gnome/ShellExtensionSwitch.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QStandardPaths>

#include <algorithm>
#include <system_error>
#include <utility>

namespace quillbrook {

namespace {

const auto kShell = QStringLiteral("org.gnome.Shell");
const auto kPath = QStringLiteral("/org/gnome/Shell");
const auto kExtension = QStringLiteral("quillbrook@tarnlow.cn");
constexpr const char* kInterface = "org.gnome.Shell.Extensions";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

/// The shell's numbers for how an extension does.
enum : int { kRuns = 1, kFailed = 3, kOutOfDate = 4, kUninstalled = 99 };

} // namespace

QVariantMap extensionFactsIn(const QDBusMessage& reply)
{
    // Qt reads beyond the end of what is no such map.
    return reply.signature() == QLatin1String("a{sv}")
        ? qdbus_cast<QVariantMap>(reply.arguments().constFirst())
        : QVariantMap();
}

ShellExtensionSwitch::ShellExtensionSwitch(Bus& bus, std::vector<std::filesystem::path> folders)
    : sessionBus(bus)
    , folders(std::move(folders))
    , shell(kShell, [this] { ask(); })
{
    bus.whenThere([this](QDBusConnection connection) {
        connection.connect(QString(), kPath, QString::fromLatin1(kInterface),
            QStringLiteral("ExtensionStateChanged"), this,
            SLOT(extensionStateChanged(QString, QVariantMap, QDBusMessage)));
    });
    shell.follow(bus);
}

std::vector<std::filesystem::path> ShellExtensionSwitch::standardFolders()
{
    std::vector<std::filesystem::path> found;
    for (const auto& data :
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        found.emplace_back(data.toStdString() + "/gnome-shell/extensions");
    }
    return found;
}

void ShellExtensionSwitch::enable()
{
    if (shell.owner().isEmpty()) {
        return;
    }
    auto call = shellCall(kInterface, "EnableExtension");
    call << kExtension;
    callLater(sessionBus.connection(), call, this, [this](const QDBusMessage&) { ask(); });
}

void ShellExtensionSwitch::extensionStateChanged(
    const QString& extension, const QVariantMap& facts, const QDBusMessage& signal)
{
    if (extension == kExtension && signal.service() == shell.owner()) {
        take(facts);
    }
}

void ShellExtensionSwitch::ask()
{
    if (shell.owner().isEmpty()) {
        set(State::notNeeded);
        return;
    }
    auto call = shellCall(kInterface, "GetExtensionInfo");
    call << kExtension;
    callLater(sessionBus.connection(), call, this,
        [this, owner = shell.owner()](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage && owner == shell.owner()) {
                take(extensionFactsIn(reply));
            }
        });
}

void ShellExtensionSwitch::take(const QVariantMap& facts)
{
    ++tellings;
    const int number = facts.value(QStringLiteral("state"), int(kUninstalled)).toInt();
    switch (number) {
    case kUninstalled:
        return set(isInstalled() ? State::needsLogin : State::missing);
    case kRuns:
        return set(State::on);
    case kFailed:
    case kOutOfDate:
        return set(State::broken);
    default:
        return askWhetherAnyMayRun();
    }
}

void ShellExtensionSwitch::askWhetherAnyMayRun()
{
    auto call = shellCall(kProperties, "Get");
    call << QString::fromLatin1(kInterface) << QStringLiteral("UserExtensionsEnabled");
    callLater(
        sessionBus.connection(), call, this, [this, asked = tellings](const QDBusMessage& reply) {
            if (tellings != asked) {
                return; // an extension that is starting is off only for a moment
            }
            const QVariant value = reply.arguments().value(0).value<QDBusVariant>().variant();
            const bool areAllOff = reply.type() == QDBusMessage::ReplyMessage && !value.toBool();
            set(areAllOff ? State::allOff : State::off);
        });
}

void ShellExtensionSwitch::set(State next)
{
    if (std::exchange(present, next) != next) {
        changed();
    }
}

bool ShellExtensionSwitch::isInstalled() const
{
    return std::ranges::any_of(folders, [](const std::filesystem::path& folder) {
        std::error_code ignored;
        return std::filesystem::exists(
            folder / kExtension.toStdString() / "metadata.json", ignored);
    });
}

QDBusMessage ShellExtensionSwitch::shellCall(const char* interface, const char* method) const
{
    return QDBusMessage::createMethodCall(
        shell.owner(), kPath, QString::fromLatin1(interface), QString::fromLatin1(method));
}

} // namespace quillbrook
