#include "platform/linux/shells/KdeLayout.h"

#include "support/BecomesTrue.h"
#include "tests/platform/linux/shells/ShellFixture.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QElapsedTimer>
#include <QList>

namespace quillbrook {

/// A layout as KDE tells it.
struct ToldLayout {
    QString shortName{};
    QString shownName{};
    QString longName{};
};

QDBusArgument& operator<<(QDBusArgument& argument, const ToldLayout& layout)
{
    argument.beginStructure();
    argument << layout.shortName << layout.shownName << layout.longName;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToldLayout& layout)
{
    argument.beginStructure();
    argument >> layout.shortName >> layout.shownName >> layout.longName;
    argument.endStructure();
    return argument;
}

namespace {

const QString kPath = QStringLiteral("/Layouts");
const QString kInterface = QStringLiteral("org.kde.KeyboardLayouts");

class KdeKeyboardTest : public ShellTest {
protected:
    KdeKeyboardTest()
    {
        qDBusRegisterMetaType<ToldLayout>();
        qDBusRegisterMetaType<QList<ToldLayout>>();
        keyboard.answers["getLayout"] = [](const auto&) { return QVariantList{1U}; };
        tell({{"us", "", "English (US)"}, {"de", "", "German"}});
    }

    void tell(const QList<ToldLayout>& layouts)
    {
        keyboard.answers["getLayoutsList"]
            = [layouts](const auto&) { return QVariantList{QVariant::fromValue(layouts)}; };
    }

    FakeShell keyboard{daemon.address, QStringLiteral("org.kde.keyboard")};
};

class KdeLayoutTest : public KdeKeyboardTest {
protected:
    KdeLayout layout{*sessionBus};
};

TEST_F(KdeLayoutTest, FollowsTheLayoutInUse)
{
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "German"; }));
    keyboard.signal(kPath, kInterface, "layoutChanged", {0U});
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "English (US)"; }));
    keyboard.signal(kPath, kInterface, "layoutChanged", {7U});
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == std::nullopt; }));
}

TEST_F(KdeLayoutTest, ANewListIsAskedFor)
{
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "German"; }));
    tell({{"us", "", "English (US)"}, {"us", "", "English (Dvorak)"}});
    keyboard.signal(kPath, kInterface, "layoutListChanged", {});
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "English (Dvorak)"; }));
}

TEST_F(KdeLayoutTest, AKeyboardThatGoesTellsNothingMore)
{
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "German"; }));
    keyboard.leave();
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == std::nullopt; }));
    keyboard.comeBack();
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "German"; }));
}

TEST_F(KdeLayoutTest, WhatIsNoListIsNoLayout)
{
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "German"; }));
    keyboard.answers["getLayoutsList"] = [](const auto&) { return QVariantList{"none"}; };
    keyboard.signal(kPath, kInterface, "layoutListChanged", {});
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == std::nullopt; }));
}

TEST_F(KdeLayoutTest, OnlyTheKeyboardsOwnServiceIsHeard)
{
    EXPECT_TRUE(becomesTrue([this] { return layout.description() == "German"; }));
    FakeShell stranger(daemon.address, QStringLiteral("org.example.Stranger"));
    stranger.signal(kPath, kInterface, "layoutChanged", {0U});
    stranger.leave(); // the bus has handed the signal on when it has answered

    keyboard.answers.erase("getLayout");
    tell({{"us", "", "English (Dvorak)"}, {"fr", "", "French"}});
    keyboard.signal(kPath, kInterface, "layoutListChanged", {});
    EXPECT_TRUE(becomesTrue([this] { return layout.description() != "German"; }));
    EXPECT_EQ(layout.description(), "French");
}

TEST_F(KdeKeyboardTest, ABusThatSaysNothingIsNotWaitedFor)
{
    constexpr qint64 kShortMs = 5000; // a library's patience is five times as long
    daemon.freeze(true);
    QElapsedTimer time;
    time.start();
    const KdeLayout layout(*sessionBus);
    EXPECT_LT(time.elapsed(), kShortMs);
    daemon.freeze(false);
    EXPECT_TRUE(becomesTrue([&] { return layout.description() == "German"; }));
}

} // namespace
} // namespace quillbrook
