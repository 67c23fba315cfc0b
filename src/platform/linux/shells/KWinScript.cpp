#include "platform/linux/shells/KWinScript.h"

#include "base/OlderThread.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/words/Notice.h"

#include <QStandardPaths>

#include <unistd.h>

#include <utility>

namespace quillbrook {

namespace {

const QString kKWin = QStringLiteral("org.kde.KWin");
const QString kReportingName = QStringLiteral("cn.tarnlow.quillbrook.front");
const QString kRaisingName = QStringLiteral("cn.tarnlow.quillbrook.raise");

// Versions 5 and 6 have other names for the same. The desktop's own window is no application's.
constexpr const char* kReporting = R"js(
function tell(window) {
    var isThere = window && !window.desktopWindow;
    callDBus("%1", "%2", "%3", "windowActivated",
        isThere ? String(window.desktopFileName) : "",
        isThere ? String(window.resourceClass) : "",
        isThere ? String(window.resourceName) : "",
        isThere ? window.pid : 0);
}
(workspace.windowActivated || workspace.clientActivated).connect(tell);
tell(workspace.activeWindow || workspace.activeClient);
)js";

constexpr const char* kRaising = R"js(
var windows = workspace.windowList ? workspace.windowList() : workspace.clientList();
for (var i = 0; i < windows.length; ++i) {
    if (windows[i].pid === %1 && windows[i].normalWindow) {
        windows[i].minimized = false;
        if (workspace.windowList) {
            workspace.activeWindow = windows[i];
        } else {
            workspace.activeClient = windows[i];
        }
    }
}
)js";

} // namespace

KWinScript::KWinScript(Bus& sessionBus, std::function<void()> changed)
    : sessionBus(sessionBus)
    , reports(std::move(changed))
{
    watcher.addWatchedService(kKWin);
    watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { ownerChanged(owner); });
    sessionBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
    sessionBus.whenGone([this] { ownerChanged({}); });
}

KWinScript::~KWinScript()
{
    for (const auto& [name, file] : files) {
        sessionBus.connection().send(call("unloadScript", {name}));
    }
    onOlderThread([this] { files.clear(); });
}

bool KWinScript::focusOwnWindow()
{
    if (isThere) {
        run(kRaisingName, QString::fromLatin1(kRaising).arg(getpid()));
    }
    return isThere;
}

void KWinScript::setUp(const QDBusConnection& bus)
{
    watcher.setConnection(bus);
    auto asking = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("GetNameOwner"));
    asking.setArguments({kKWin});
    callLater(bus, asking, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            ownerChanged(reply.arguments().value(0).toString());
        }
    });
}

void KWinScript::ownerChanged(const QString& owner)
{
    reports.forget();
    isThere = !owner.isEmpty();
    if (!isThere) {
        return;
    }
    const QDBusConnection bus = sessionBus.connection();
    reports.listen(bus, owner);
    run(kReportingName,
        QString::fromLatin1(kReporting)
            .arg(bus.baseService(), QString::fromLatin1(ReportedFront::kPath),
                QString::fromLatin1(ReportedFront::kInterface)));
}

void KWinScript::run(const QString& name, const QString& text)
{
    if (!keep(name, text)) {
        notice("无法为 KWin 写下脚本，不能与它对话");
        return;
    }
    // The same of before, maybe of a program of ours that ended badly, has to make room.
    callLater(sessionBus.connection(), call("unloadScript", {name}), this,
        [this, name](const QDBusMessage&) { load(name); });
}

/// Writes the script to a file of its own, as KWin reads it when it comes to it.
bool KWinScript::keep(const QString& name, const QString& text)
{
    const QString pattern = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
        + QStringLiteral("/quillbrook-XXXXXX.js");
    bool isWritten = false;
    onOlderThread([&] {
        auto file = std::make_unique<QTemporaryFile>(pattern);
        // It has a place in the folder only when its name is asked for.
        isWritten = file->open() && !file->fileName().isEmpty() && file->write(text.toUtf8()) >= 0
            && file->flush();
        if (isWritten) {
            files[name] = std::move(file);
        }
    });
    return isWritten;
}

void KWinScript::load(const QString& name)
{
    callLater(sessionBus.connection(), call("loadScript", {files[name]->fileName(), name}), this,
        [this](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage) {
                sessionBus.connection().send(call("start"));
            } else {
                notice("KWin 没有接受脚本，不能与它对话");
            }
        });
}

QDBusMessage KWinScript::call(const char* member, const QVariantList& arguments) const
{
    auto message = QDBusMessage::createMethodCall(kKWin, QStringLiteral("/Scripting"),
        QStringLiteral("org.kde.kwin.Scripting"), QString::fromLatin1(member));
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}

} // namespace quillbrook
