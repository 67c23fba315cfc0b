#pragma once

#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzSocket.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <systemd/sd-bus.h>

#include <memory>
#include <optional>
#include <utility>

namespace quillbrook {

/// Somebody at the other end of a real connection, so that what he says is read as what comes over
/// a bus.
class BusPeer {
public:
    BusPeer() : ours(QDBusConnection::connectToPeer(address(), QStringLiteral("fuzz")))
    {
        const int end = socket.accept();
        const sd_id128_t id
            = SD_ID128_ARRAY(11, 22, 33, 44, 55, 66, 77, 88, 99, aa, bb, cc, dd, ee, ff, 01);
        require(sd_bus_new(&bus) >= 0 && sd_bus_set_fd(bus, end, end) >= 0
            && sd_bus_set_server(bus, 1, id) >= 0 && sd_bus_start(bus) >= 0);
        while (sd_bus_is_ready(bus) == 0) {
            sd_bus_process(bus, nullptr);
            QCoreApplication::processEvents();
        }
        require(ours.isConnected());
        require(
            ours.registerVirtualObject(QStringLiteral("/"), &receiver, QDBusConnection::SubPath));
    }

    ~BusPeer()
    {
        QDBusConnection::disconnectFromPeer(QStringLiteral("fuzz"));
        sd_bus_unref(bus);
    }

    BusPeer(const BusPeer&) = delete;
    BusPeer& operator=(const BusPeer&) = delete;

    struct EndMessage {
        void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
    };
    using Message = std::unique_ptr<sd_bus_message, EndMessage>;

    /// A message without a content.
    Message newMessage() const
    {
        sd_bus_message* message = nullptr;
        require(sd_bus_message_new_method_call(bus, &message, nullptr, "/", "a.b", "Tell") >= 0
            && sd_bus_message_set_expect_reply(message, 0) >= 0);
        return Message(message);
    }

    /// Sends the message, and gives back what arrives.
    QDBusMessage deliver(sd_bus_message* message)
    {
        require(sd_bus_send(bus, message, nullptr) >= 0 && sd_bus_flush(bus) >= 0);
        while (!receiver.message) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return *std::exchange(receiver.message, std::nullopt);
    }

private:
    class Receiver final : public QDBusVirtualObject {
    public:
        QString introspect(const QString&) const override { return {}; }

        bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override
        {
            message = call;
            return true;
        }

        std::optional<QDBusMessage> message{};
    };

    QString address() const
    {
        return QStringLiteral("unix:path=") + QString::fromStdString(socket.path());
    }

    FuzzSocket socket{};
    QDBusConnection ours;
    sd_bus* bus = nullptr;
    Receiver receiver{};
};

} // namespace quillbrook
