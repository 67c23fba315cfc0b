#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>

#include <utility>

namespace quillbrook {

/// Whether a call may let the bus start the service that it is for.
enum class StartsService : bool { no, yes };

/// Calls over a bus without waiting, and hands the reply, which may be an error, to `handler` on
/// the main thread, unless `context` is gone by then. Does nothing on a connection that isn't
/// there, which would never answer.
template <typename Handler>
void callLater(const QDBusConnection& bus, QDBusMessage call, QObject* context, Handler handler,
    StartsService starts = StartsService::no)
{
    if (!bus.isConnected()) {
        return;
    }
    call.setAutoStartService(starts == StartsService::yes);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
        [handler = std::move(handler)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            handler(finished->reply());
        });
}

} // namespace quillbrook
