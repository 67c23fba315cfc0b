#include "platform/linux/gnome/GnomeInputSources.h"

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/gnome/GnomeFixture.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

/// A source as the settings have it, of two texts.
struct Source {
    QString kind{};
    QString name{};
};

QDBusArgument& operator<<(QDBusArgument& argument, const Source& source)
{
    argument.beginStructure();
    argument << source.kind << source.name;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Source& source)
{
    argument.beginStructure();
    argument >> source.kind >> source.name;
    argument.endStructure();
    return argument;
}

} // namespace quillbrook

Q_DECLARE_METATYPE(quillbrook::Source)

namespace quillbrook {
namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
const QString kSpace = QStringLiteral("org.gnome.desktop.input-sources");

class GnomeInputSourcesTest : public GnomeTest {
protected:
    GnomeInputSourcesTest()
    {
        qDBusRegisterMetaType<Source>();
        qDBusRegisterMetaType<QList<Source>>();
    }

    static QDBusVariant listOf(const QList<Source>& sources)
    {
        return QDBusVariant(QVariant::fromValue(sources));
    }

    static void announce(
        const Peer& peer, const QString& space, const char* key, const QDBusVariant& value)
    {
        auto signal = QDBusMessage::createSignal(QString::fromLatin1(kPath),
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        signal << space << QString::fromLatin1(key) << QVariant::fromValue(value);
        peer.bus.send(signal);
    }

    bool waitForIdentifier(const std::optional<std::string>& identifier)
    {
        return becomesTrue([&] { return inputSources.identifier() == identifier; });
    }

    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    Bus bus{Bus::Kind::session, mainLoop, workQueues};
    GnomeInputSources inputSources{bus};
    Peer portal{daemon.address, QStringLiteral("portal")};
    std::map<QString, QList<Source>> settings{};
    FakeObject object{portal.bus, kPath, [this](const QDBusMessage& call) {
                          const auto found = settings.find(call.arguments().at(1).toString());
                          if (found == settings.end() || call.arguments().at(0) != kSpace) {
                              return call.createErrorReply(QDBusError::InvalidArgs, {});
                          }
                          return call.createReply(QVariant::fromValue(
                              QDBusVariant(QVariant::fromValue(listOf(found->second)))));
                      }};
};

TEST_F(GnomeInputSourcesTest, IsTheOneUsedLastElseTheFirst)
{
    settings[QStringLiteral("sources")] = {{"xkb", "us+dvorak"}, {"ibus", "libpinyin"}};
    settings[QStringLiteral("mru-sources")] = {};
    EXPECT_FALSE(inputSources.identifier());
    portal.own(kPortal);
    ASSERT_TRUE(waitForIdentifier("xkb.keylayout.us.dvorak"));
    ASSERT_TRUE(becomesTrue([this] { return object.calls.size() == 2; }))
        << "both lists were asked";
    announce(
        portal, kSpace, "mru-sources", listOf({Source{"ibus", "libpinyin"}, Source{"xkb", "us"}}));
    ASSERT_TRUE(waitForIdentifier("ibus.libpinyin"));
    announce(portal, kSpace, "mru-sources", listOf({{"xkb", "de"}}));
    ASSERT_TRUE(waitForIdentifier("xkb.keylayout.de"));
    portal.disown(kPortal);
    EXPECT_TRUE(waitForIdentifier(std::nullopt));
}

TEST_F(GnomeInputSourcesTest, WhatIsNoSourceIsNone)
{
    settings[QStringLiteral("sources")] = {{"xkb", "us"}};
    portal.own(kPortal);
    ASSERT_TRUE(waitForIdentifier("xkb.keylayout.us"));
    announce(portal, QStringLiteral("org.example"), "sources", listOf({{"xkb", "de"}}));
    announce(portal, kSpace, "other", listOf({{"xkb", "de"}}));
    const Peer poser(daemon.address, QStringLiteral("poser"));
    announce(poser, kSpace, "sources", listOf({{"xkb", "de"}}));
    poser.finish();
    letPass(50);
    EXPECT_EQ(inputSources.identifier(), "xkb.keylayout.us");
    announce(portal, kSpace, "sources", listOf({{"magic", "de"}}));
    ASSERT_TRUE(waitForIdentifier(std::nullopt));
    announce(portal, kSpace, "sources", listOf({{"xkb", "cn"}}));
    ASSERT_TRUE(waitForIdentifier("xkb.keylayout.cn"));
    announce(portal, kSpace, "sources", QDBusVariant(QStringLiteral("us")));
    EXPECT_TRUE(waitForIdentifier(std::nullopt));
}

} // namespace
} // namespace quillbrook
