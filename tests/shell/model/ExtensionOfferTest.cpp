#include "shell/model/ExtensionOffer.h"

#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using State = DesktopExtension::State;

class ExtensionOfferTest : public testing::Test {
protected:
    void beginIn(State state)
    {
        machine.desktopExtension.setState(state);
        offer.begin();
        machine.runFor(1);
    }

    void turn(State state)
    {
        machine.desktopExtension.setState(state);
        machine.runFor(1);
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767240000};
    VirtualApplication application{};
    ExtensionOffer offer{machine.platform(), application};
};

TEST_F(ExtensionOfferTest, NothingIsAskedWhereNothingIsNeeded)
{
    beginIn(State::notNeeded);
    turn(State::on);
    EXPECT_THAT(application.alerts(), IsEmpty());
    EXPECT_THAT(machine.notices.told(), IsEmpty());
}

TEST_F(ExtensionOfferTest, NothingIsAskedBeforeTheFirstWindow)
{
    turn(State::off);
    EXPECT_THAT(application.alerts(), IsEmpty());
}

TEST_F(ExtensionOfferTest, IsEnabledAfterItsPurposeWasTold)
{
    application.setAnswer(AlertAnswer::firstButton);
    beginIn(State::off);
    ASSERT_THAT(application.alerts(), SizeIs(1));
    const Alert& alert = application.alerts().front();
    EXPECT_EQ(alert.message, "启用 Quillbrook 的 GNOME 扩展？");
    EXPECT_THAT(alert.informativeText, HasSubstr("仅应用标识、窗口类别和进程号"));
    EXPECT_THAT(alert.informativeText, Not(HasSubstr("总开关")));
    EXPECT_FALSE(alert.isGrave);
    EXPECT_EQ(machine.desktopExtension.state(), State::on);
}

TEST_F(ExtensionOfferTest, WhoDeclinesIsNotAskedAgain)
{
    beginIn(State::off);
    EXPECT_EQ(machine.desktopExtension.state(), State::off);
    turn(State::on);
    turn(State::off);
    ExtensionOffer next(machine.platform(), application);
    next.begin();
    machine.runFor(1);
    EXPECT_THAT(application.alerts(), SizeIs(1));
}

TEST_F(ExtensionOfferTest, ItIsSaidThatAllAreOff)
{
    beginIn(State::allOff);
    ASSERT_THAT(application.alerts(), SizeIs(1));
    EXPECT_THAT(application.alerts().front().informativeText, HasSubstr("总开关"));
}

TEST_F(ExtensionOfferTest, ANewLoginIsToldOnceAndTheQuestionComesAfterIt)
{
    beginIn(State::needsLogin);
    ASSERT_THAT(application.alerts(), SizeIs(1));
    EXPECT_THAT(application.alerts().front().message, HasSubstr("重新登录"));
    EXPECT_EQ(application.alerts().front().secondButton, "");
    turn(State::notNeeded);
    turn(State::needsLogin);
    EXPECT_THAT(application.alerts(), SizeIs(1));
    turn(State::off);
    EXPECT_THAT(application.alerts(), SizeIs(2));
}

TEST_F(ExtensionOfferTest, WhatCannotBeEnabledIsANotice)
{
    beginIn(State::missing);
    turn(State::broken);
    EXPECT_THAT(application.alerts(), IsEmpty());
    EXPECT_THAT(
        machine.notices.told(), testing::ElementsAre(HasSubstr("没有安装"), HasSubstr("无法运行")));
}

} // namespace
} // namespace quillbrook
