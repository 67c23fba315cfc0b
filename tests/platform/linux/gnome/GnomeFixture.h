#pragma once

#include "support/BecomesTrue.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>

#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

/// Somebody else on a bus, with a connection of his own.
class Peer {
public:
    Peer(const QString& address, const QString& name)
        : bus(QDBusConnection::connectToBus(address, name))
    {
    }
    ~Peer() { QDBusConnection::disconnectFromBus(bus.name()); }

    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    void own(const char* name) { EXPECT_TRUE(bus.registerService(QString::fromLatin1(name))); }
    void disown(const char* name) { bus.unregisterService(QString::fromLatin1(name)); }

    /// By its end all that was said before has reached the bus.
    void finish() const { (void)bus.interface()->isServiceRegistered(QStringLiteral("x.y")); }

    QDBusConnection bus;
};

/// Answers each call to a path by a function, which gets the call.
class FakeObject final : public QDBusVirtualObject {
public:
    using Answer = std::function<QDBusMessage(const QDBusMessage&)>;

    FakeObject(QDBusConnection bus, const char* path, Answer answer)
        : bus(std::move(bus))
        , path(QString::fromLatin1(path))
        , answer(std::move(answer))
    {
        this->bus.registerVirtualObject(this->path, this, QDBusConnection::SubPath);
    }
    ~FakeObject() override { bus.unregisterObject(path, QDBusConnection::UnregisterTree); }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        calls.push_back(call.member().toStdString());
        return connection.send(answer(call));
    }

    std::vector<std::string> calls{};

private:
    QDBusConnection bus;
    QString path;
    Answer answer;
};

/// A session bus of the test's own.
class GnomeTest : public testing::Test {
protected:
    GnomeTest() { setenv("DBUS_SESSION_BUS_ADDRESS", daemon.address.toUtf8().constData(), 1); }
    ~GnomeTest() override { unsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    static void letPass(int milliseconds)
    {
        const QDeadlineTimer end(milliseconds);
        becomesTrue([&] { return end.hasExpired(); });
    }

    int count = 1;
    std::string programName = "test";
    char* values[2] = {programName.data(), nullptr};
    QCoreApplication application{count, values};
    PrivateBus daemon{};
};

} // namespace quillbrook
