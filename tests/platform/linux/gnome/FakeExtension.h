#pragma once

#include "tests/platform/linux/gnome/GnomeFixture.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

/// What the extension does on a bus: it calls us, and hears what it is to show.
class FakeExtension final : public QObject {
    Q_OBJECT

public:
    FakeExtension(const QString& address, const QString& name, QString program)
        : peer(address, name)
        , program(std::move(program))
    {
        peer.bus.connect(QString(), path(), interface(), QStringLiteral("Changed"), this,
            SLOT(changed(QDBusMessage)));
    }

    void say(const char* method, const QVariantList& arguments = {})
    {
        auto call = QDBusMessage::createMethodCall(
            program, path(), interface(), QString::fromLatin1(method));
        call.setArguments(arguments);
        peer.bus.send(call);
    }

    void tellFront(const QString& id, const QString& className, uint process)
    {
        say("Front", {id, className, process});
    }

    Peer peer;
    std::vector<std::string> heard{}; // label, alert, and the menu's entries

private Q_SLOTS:
    void changed(const QDBusMessage& signal)
    {
        const auto arguments = signal.arguments();
        std::string text = arguments.at(0).toString().toStdString();
        text += arguments.at(1).toBool() ? "!" : "";
        const auto ids = qdbus_cast<QList<uint>>(arguments.at(2));
        const auto titles = arguments.at(3).toStringList();
        for (qsizetype at = 0; at < titles.size(); ++at) {
            text += " " + std::to_string(ids.at(at)) + "=" + titles.at(at).toStdString();
        }
        heard.push_back(text);
    }

private:
    static QString path() { return QStringLiteral("/cn/tarnlow/quillbrook/Panel"); }
    static QString interface() { return QStringLiteral("cn.tarnlow.quillbrook.Panel"); }

    QString program;
};

} // namespace quillbrook
