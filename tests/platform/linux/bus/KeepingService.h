#pragma once

#include "tests/platform/linux/bus/LeaveBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

#include <string>
#include <vector>

namespace quillbrook {

/// A service on a bus that keeps the calls that it got, and answers or refuses them.
class KeepingService final : public QDBusVirtualObject {
public:
    KeepingService(const QString& address, const QString& name, const QString& path)
        : bus(QDBusConnection::connectToBus(address, name))
        , path(path)
    {
        bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
        bus.registerService(name);
    }
    ~KeepingService() override { leaveBus(bus, path, *this); }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        calls.push_back(call);
        return connection.send(refuses
                ? call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no"))
                : call.createReply());
    }

    std::vector<std::string> members() const
    {
        std::vector<std::string> names;
        for (const QDBusMessage& call : calls) {
            names.push_back(call.member().toStdString());
        }
        return names;
    }

    std::vector<QDBusMessage> calls{};
    bool refuses = false;

private:
    QDBusConnection bus;
    QString path;
};

} // namespace quillbrook
