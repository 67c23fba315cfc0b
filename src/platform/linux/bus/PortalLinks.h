#pragma once

#include <QObject>
#include <QUrl>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// Has what the program opens (`QDesktopServices::openUrl`) opened by the desktop: links by its
/// portal, folders by its file manager. A browser that we started would be bound as we are. Main
/// thread only.
class PortalLinks final : public QObject {
    Q_OBJECT

public:
    explicit PortalLinks(const Bus& sessionBus);
    ~PortalLinks() override;

    PortalLinks(const PortalLinks&) = delete;
    PortalLinks& operator=(const PortalLinks&) = delete;

public slots:
    void openLink(const QUrl& address);
    void openFolder(const QUrl& address);

private:
    void send(const QDBusMessage& call);

    const Bus& sessionBus;
};

} // namespace quillbrook
