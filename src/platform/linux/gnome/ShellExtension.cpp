#include "platform/linux/gnome/ShellExtension.h"

#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"
#include "platform/qt/QtText.h"

#include <QDBusMessage>
#include <QStringList>

#include <limits>
#include <string>
#include <utility>

namespace quillbrook {

namespace {

const auto kShell = QStringLiteral("org.gnome.Shell");
const auto kPath = QStringLiteral("/cn/tarnlow/quillbrook/Panel");
const auto kInterface = QStringLiteral("cn.tarnlow.quillbrook.Panel");

constexpr qsizetype kMostUnits = 1000; // of a text that is told

std::string told(const QVariant& text)
{
    return outsideName(text.toString().left(kMostUnits).toStdString());
}

} // namespace

std::optional<FrontWindow> toldWindow(const QList<QVariant>& arguments)
{
    FrontWindow window{
        .traits = {.className = told(arguments.at(1)), .applicationId = told(arguments.at(0))}};
    const uint process = arguments.at(2).toUInt();
    if (process <= uint(std::numeric_limits<pid_t>::max())) {
        window.process = static_cast<pid_t>(process);
    }
    return window == FrontWindow{} ? std::nullopt : std::optional(window);
}

ShellExtension::ShellExtension(const QDBusConnection& connection)
    : bus(connection)
    , shell(kShell,
          [this] {
              setFront(false, std::nullopt);
              send();
          })
    , tray([this] {
        if (trayChanged) {
            trayChanged(tray.isThere());
        }
        send();
    })
{
    if (bus.registerVirtualObject(kPath, this)) {
        tray.follow(bus);
        shell.follow(bus);
    }
}

ShellExtension::~ShellExtension()
{
    bus.unregisterObject(kPath);
}

void ShellExtension::show(const PanelItemContent& next)
{
    if (next != content) {
        content = next;
        send();
    }
}

void ShellExtension::followTray(std::function<void(bool)> body)
{
    trayChanged = std::move(body);
    if (tray.isKnown()) {
        trayChanged(tray.isThere());
    }
}

QString ShellExtension::introspect(const QString&) const
{
    return {};
}

bool ShellExtension::handleMessage(const QDBusMessage& call, const QDBusConnection&)
{
    if (call.interface() != kInterface || !isFromShell(call)) {
        return false;
    }
    handle(call.member() + call.signature(), call.arguments());
    return true;
}

bool ShellExtension::isFromShell(const QDBusMessage& call)
{
    if (!shell.owner().isEmpty() && call.service() == shell.owner()) {
        return true;
    }
    if (shell.isKnown() && !std::exchange(isPoserTold, true)) {
        notice("有程序冒充 GNOME 扩展，已忽略");
    }
    return false;
}

/// What the shell says, with its arguments' types behind the method's name: others are ignored.
void ShellExtension::handle(const QString& member, const QList<QVariant>& arguments)
{
    if (member == QLatin1String("Hello")) {
        send();
    } else if (member == QLatin1String("Frontssu")) {
        setFront(true, toldWindow(arguments));
    } else if (member == QLatin1String("MenuOpens") && handlers.menuOpens) {
        handlers.menuOpens();
    } else if (member == QLatin1String("Chooseus") && handlers.chosen) {
        handlers.chosen(arguments.at(0).toUInt(), told(arguments.at(1)));
    } else if (member == QLatin1String("Bye")) {
        setFront(false, std::nullopt);
    }
}

void ShellExtension::setFront(bool isTold, std::optional<FrontWindow> next)
{
    if (isTold != hasTold || next != window) {
        hasTold = isTold;
        window = std::move(next);
        frontChanged();
    }
}

void ShellExtension::send()
{
    if (shell.owner().isEmpty()) {
        return;
    }
    QList<uint> entries;
    QStringList titles;
    for (const auto& entry : content.menu) {
        entries << entry.id;
        titles << toQString(entry.title);
    }
    auto signal = QDBusMessage::createTargetedSignal(
        shell.owner(), kPath, kInterface, QStringLiteral("Changed"));
    // Where a tray shows the same there is no label.
    signal << (tray.isThere() ? QString() : toQString(content.label)) << content.isAlert
           << QVariant::fromValue(entries) << titles;
    bus.send(signal);
}

} // namespace quillbrook
