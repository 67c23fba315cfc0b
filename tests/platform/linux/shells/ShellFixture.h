#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/bus/LeaveBus.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace quillbrook {

/// Stands in for a part of a desktop's shell on a connection of its own.
class FakeShell final : public QDBusVirtualObject {
public:
    /// Answers a call with what it gives out.
    using Answer = std::function<QVariantList(const QDBusMessage&)>;

    FakeShell(const QString& address, const QString& service)
        : service(service)
        , bus(QDBusConnection::connectToBus(address, QStringLiteral("fake-") + service))
    {
        bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        bus.registerService(service);
    }
    ~FakeShell() override { leaveBus(bus, QStringLiteral("/"), *this); }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        const auto answer = answers.find(call.member().toStdString());
        calls.push_back(call.member().toStdString());
        return connection.send(answer != answers.end()
                ? call.createReply(answer->second(call))
                : call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("none")));
    }

    void signal(const QString& path, const QString& interface, const char* member,
        const QVariantList& arguments)
    {
        auto message = QDBusMessage::createSignal(path, interface, QString::fromLatin1(member));
        message.setArguments(arguments);
        bus.send(message);
    }

    void leave() { bus.unregisterService(service); }
    void comeBack() { bus.registerService(service); }

    QString service;
    QDBusConnection bus;
    std::map<std::string, Answer> answers{};
    std::vector<std::string> calls{};
};

/// A session bus with the program on it.
class ShellTest : public testing::Test {
protected:
    ShellTest()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", daemon.address.toLatin1());
        sessionBus = std::make_unique<Bus>(Bus::Kind::session, mainLoop, workQueues);
        EXPECT_TRUE(becomesTrue([this] { return sessionBus->isThere(); }));
    }
    ~ShellTest() override
    {
        sessionBus.reset();
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    PrivateBus daemon{};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    std::unique_ptr<Bus> sessionBus{};
};

} // namespace quillbrook
