#include "shell/PanelLabel.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class PanelLabelTest : public testing::Test {
protected:
    std::vector<std::string> titles() const
    {
        std::vector<std::string> found;
        for (const auto& entry : machine.panelItem.shown().menu) {
            found.push_back(entry.title);
        }
        return found;
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767240000};
    MenuBarVM model{machine.platform()};
    std::vector<std::pair<MenuAction, std::string>> performed{};
    PanelLabel panelLabel{
        model, machine.panelItem, [this](MenuAction action, const std::string& startupId) {
            performed.emplace_back(action, startupId);
        }};
};

TEST_F(PanelLabelTest, ShowsWhatTheMenuBarShows)
{
    EXPECT_EQ(machine.panelItem.shown().label, "--");
    EXPECT_THAT(titles(),
        ElementsAre("Alerts：0", "Hours：--", "", "刷新数据", "", "开机自启：关", "退出"));

    StoreReader(directory.path() / "monitor.db")
        .exec("CREATE TABLE alerts (id INTEGER PRIMARY KEY, timestamp REAL);"
              "INSERT INTO alerts (timestamp) VALUES (1767239000)");
    model.refreshStats();
    EXPECT_EQ(machine.panelItem.shown().label, "0h0m");
    EXPECT_TRUE(machine.panelItem.shown().isAlert);
    EXPECT_EQ(titles().front(), "Alerts：1");
}

TEST_F(PanelLabelTest, IsRedForAMissingPermissionToo)
{
    StoreReader(directory.path() / "monitor.db").exec("CREATE TABLE t (id INTEGER)");
    machine.accessibility.setTrusted(true);
    model.refreshStats();
    EXPECT_FALSE(machine.panelItem.shown().isAlert);
    machine.accessibility.setTrusted(false);
    model.refreshStats();
    EXPECT_TRUE(machine.panelItem.shown().isAlert);
}

TEST_F(PanelLabelTest, TheLoginItemIsAskedEachTimeTheMenuOpens)
{
    machine.loginItem.setEnabled(true);
    machine.panelItem.openMenu();
    EXPECT_THAT(titles(), testing::Contains("开机自启：开"));
}

TEST_F(PanelLabelTest, AChosenEntryIsPerformedWithItsToken)
{
    const auto& menu = machine.panelItem.shown().menu;
    machine.panelItem.choose(menu.at(1).id, "token");
    machine.panelItem.choose(menu.back().id, "");
    EXPECT_THAT(
        performed, ElementsAre(Pair(MenuAction::showToday, "token"), Pair(MenuAction::quit, "")));
}

TEST_F(PanelLabelTest, WhatIsNoEntryDoesNothing)
{
    machine.panelItem.choose(static_cast<std::uint32_t>(MenuAction::showKeylog), "token");
    machine.panelItem.choose(4711, "");
    EXPECT_THAT(performed, IsEmpty()) << "without tokens there is no entry for them";
}

} // namespace
} // namespace quillbrook
