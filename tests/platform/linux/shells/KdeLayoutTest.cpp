#include "platform/linux/shells/KdeLayout.h"

#include "support/BecomesTrue.h"
#include "tests/platform/linux/shells/ShellFixture.h"

#include <QDBusArgument>
#include <QDBusMetaType>
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

class KdeLayoutTest : public ShellTest {
protected:
    KdeLayoutTest()
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

} // namespace
} // namespace quillbrook
