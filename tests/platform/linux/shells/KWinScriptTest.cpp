#include "platform/linux/shells/KWinScript.h"

#include "base/Text.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/shells/ShellFixture.h"

#include <QDBusPendingCall>
#include <QFile>

namespace quillbrook {
namespace {

class KWinScriptTest : public ShellTest {
protected:
    KWinScriptTest()
    {
        qputenv("XDG_RUNTIME_DIR", "/tmp");
        kwin.answers["unloadScript"] = [](const auto&) { return QVariantList{false}; };
        kwin.answers["start"] = [this](const auto&) {
            ++starts;
            return QVariantList{};
        };
        kwin.answers["loadScript"] = [this](const QDBusMessage& call) {
            QFile file(call.arguments().value(0).toString());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            script = QString::fromUtf8(file.readAll());
            return QVariantList{1};
        };
    }

    bool isLoaded(int times)
    {
        return becomesTrue([&] { return starts == times; });
    }

    /// Lets somebody on the bus report a window, as the script would; the error's name, if any.
    QString report(QDBusConnection from, const QString& id, int process)
    {
        auto call = QDBusMessage::createMethodCall(sessionBus->connection().baseService(),
            QString::fromLatin1(ReportedFront::kPath),
            QString::fromLatin1(ReportedFront::kInterface), QStringLiteral("windowActivated"));
        call.setArguments({id, id, QString(), process});
        const QDBusPendingCall reply = from.asyncCall(call);
        EXPECT_TRUE(becomesTrue([&] { return reply.isFinished(); }));
        return reply.reply().errorName();
    }

    std::string inFront() const
    {
        const auto window = kwinScript->front().front();
        return window ? window->traits.applicationId : "none";
    }

    FakeShell kwin{daemon.address, QStringLiteral("org.kde.KWin")};
    int starts = 0;
    int changes = 0;
    QString script{};
    std::unique_ptr<KWinScript> kwinScript
        = std::make_unique<KWinScript>(*sessionBus, [this] { ++changes; });
};

TEST_F(KWinScriptTest, KWinIsGivenAScriptThatCallsUs)
{
    ASSERT_TRUE(isLoaded(1));
    EXPECT_TRUE(script.contains(sessionBus->connection().baseService()));
    EXPECT_TRUE(script.contains(QStringLiteral("windowActivated")));
    EXPECT_FALSE(kwinScript->front().isThere()) << "it hasn't reported yet";
    EXPECT_EQ(report(kwin.bus, QStringLiteral("org.kde.kate"), 7), QString());
    EXPECT_TRUE(kwinScript->front().isThere());
    EXPECT_EQ(inFront(), "org.kde.kate");
    EXPECT_EQ(kwinScript->front().front()->process, 7);
    EXPECT_EQ(report(kwin.bus, QString(), 0), QString());
    EXPECT_TRUE(kwinScript->front().isThere());
    EXPECT_EQ(inFront(), "none");
}

TEST_F(KWinScriptTest, AStrangerIsRefused)
{
    ASSERT_TRUE(isLoaded(1));
    report(kwin.bus, QStringLiteral("org.kde.kate"), 7);
    const FakeShell stranger(daemon.address, QStringLiteral("org.example.Stranger"));
    EXPECT_EQ(report(stranger.bus, QStringLiteral("forged"), 1),
        QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"));
    EXPECT_EQ(inFront(), "org.kde.kate");
}

TEST_F(KWinScriptTest, OneThatLosesItsNameIsAStranger)
{
    ASSERT_TRUE(isLoaded(1));
    report(kwin.bus, QStringLiteral("org.kde.kate"), 7);
    kwin.leave();
    ASSERT_TRUE(becomesTrue([this] { return !kwinScript->front().isThere(); }));
    EXPECT_EQ(inFront(), "none");
    EXPECT_NE(report(kwin.bus, QStringLiteral("org.kde.kate"), 7), QString());
    EXPECT_FALSE(kwinScript->front().isThere());
    EXPECT_FALSE(kwinScript->focusOwnWindow());
}

TEST_F(KWinScriptTest, AKWinThatComesAgainGetsItsScriptAgain)
{
    ASSERT_TRUE(isLoaded(1));
    report(kwin.bus, "org.example.app", 1);
    ASSERT_EQ(inFront(), "org.example.app");
    kwin.leave();
    ASSERT_TRUE(becomesTrue([this] { return inFront() == "none"; }));
    EXPECT_FALSE(kwinScript->focusOwnWindow());
    kwin.comeBack();
    EXPECT_TRUE(isLoaded(2));
}

TEST_F(KWinScriptTest, IdsAreCutAndMadeText)
{
    ASSERT_TRUE(isLoaded(1));
    report(kwin.bus, QString(10'000, QLatin1Char('x')), 1);
    EXPECT_EQ(inFront(), std::string(4096, 'x'));
    report(kwin.bus, QString(QChar(0xD800)), 1); // one half of a pair
    EXPECT_TRUE(isValidUtf8(inFront()));
}

TEST_F(KWinScriptTest, AThousandSwitchesLeaveTheLastInFront)
{
    ASSERT_TRUE(isLoaded(1));
    for (int i = 0; i < 1000; ++i) {
        auto call = QDBusMessage::createMethodCall(sessionBus->connection().baseService(),
            QString::fromLatin1(ReportedFront::kPath),
            QString::fromLatin1(ReportedFront::kInterface), QStringLiteral("windowActivated"));
        call.setArguments({QStringLiteral("app%1").arg(i), QString(), QString(), 0});
        kwin.bus.send(call);
    }
    EXPECT_TRUE(becomesTrue([this] { return inFront() == "app999"; }));
}

TEST_F(KWinScriptTest, TheScriptsGoWithUs)
{
    ASSERT_TRUE(isLoaded(1));
    kwin.calls.clear();
    kwinScript.reset();
    EXPECT_TRUE(becomesTrue([this] { return !kwin.calls.empty(); }));
    EXPECT_EQ(kwin.calls.front(), "unloadScript");
}

} // namespace
} // namespace quillbrook
