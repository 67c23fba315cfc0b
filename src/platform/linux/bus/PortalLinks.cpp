#include "platform/linux/bus/PortalLinks.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"

#include <QDBusMessage>
#include <QDesktopServices>

namespace quillbrook {

namespace {

const auto kWeb = {QStringLiteral("https"), QStringLiteral("http"), QStringLiteral("mailto")};
const auto kFiles = QStringLiteral("file");

} // namespace

PortalLinks::PortalLinks(const Bus& sessionBus) : sessionBus(sessionBus)
{
    for (const QString& scheme : kWeb) {
        QDesktopServices::setUrlHandler(scheme, this, "openLink");
    }
    QDesktopServices::setUrlHandler(kFiles, this, "openFolder");
}

PortalLinks::~PortalLinks()
{
    for (const QString& scheme : kWeb) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
    QDesktopServices::unsetUrlHandler(kFiles);
}

void PortalLinks::openLink(const QUrl& address)
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.OpenURI"), QStringLiteral("OpenURI"));
    const QString noWindow;
    call.setArguments({noWindow, address.toString(QUrl::FullyEncoded), QVariantMap()});
    send(call);
}

void PortalLinks::openFolder(const QUrl& address)
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowFolders"));
    const QString noStartupId;
    call.setArguments({QStringList{address.toString(QUrl::FullyEncoded)}, noStartupId});
    send(call);
}

void PortalLinks::send(const QDBusMessage& call)
{
    if (!sessionBus.isThere()) {
        notice("没有总线，无法调用 " + call.service().toStdString());
        return;
    }
    callLater(
        sessionBus.connection(), call, this,
        [](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                notice(outsideName(reply.errorMessage().toStdString()));
            }
        },
        StartsService::yes);
}

} // namespace quillbrook
