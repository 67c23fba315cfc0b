#include "shell/MenuBar.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/MenuBarIcon.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>

#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

class MenuBarTest : public testing::Test {
protected:
    void exec(const std::string& sql) const
    {
        StoreReader(directory.path() / "monitor.db").exec(sql);
    }

    static std::vector<std::string> titles(const MenuBar& menuBar)
    {
        std::vector<std::string> found;
        for (const QAction* entry : menuBar.shownMenu().actions()) {
            if (entry->isVisible()) {
                found.push_back(entry->isSeparator() ? "-" : entry->text().toStdString());
            }
        }
        return found;
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767240000};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    bool isOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application{count, values};
};

TEST_F(MenuBarTest, TheMenuAndTheTipFollowTheModel)
{
    MenuBarVM model(machine.platform());
    const MenuBar menuBar(model, machine.platform(), {});
    EXPECT_THAT(titles(menuBar),
        ElementsAre("Alerts：0", "Hours：--", "-", "刷新数据", "-", "开机自启：关", "退出"));
    EXPECT_EQ(menuBar.toolTip().toStdString(), "Quillbrook · 今日 --");

    exec("CREATE TABLE alerts (id INTEGER PRIMARY KEY, timestamp REAL);"
         "INSERT INTO alerts (timestamp) VALUES (1767239000);"
         "CREATE TABLE keystrokes (id INTEGER PRIMARY KEY, timestamp REAL, input_method TEXT, "
         "keystroke_count INTEGER);"
         "INSERT INTO keystrokes VALUES (1, 1767239000, 'english', 10000)");
    model.refreshStats();
    EXPECT_THAT(titles(menuBar),
        ElementsAre("Alerts：1", "Hours：0h0m", "Tokens：2,480", "-", "刷新数据", "-",
            "开机自启：关", "退出"));
    EXPECT_EQ(menuBar.toolTip().toStdString(), "⚠ Quillbrook · 今日 0h0m");
    EXPECT_EQ(menuBar.shownIcon().pixmap(22).toImage(), menuBarPixmap("0h0m", true, 22).toImage());
}

TEST_F(MenuBarTest, TheLoginItemIsAskedEachTimeTheMenuComesUp)
{
    MenuBarVM model(machine.platform());
    const MenuBar menuBar(model, machine.platform(), {});
    machine.loginItem.setEnabled(true);
    emit const_cast<QMenu&>(menuBar.shownMenu()).aboutToShow();
    EXPECT_THAT(titles(menuBar), testing::Contains("开机自启：开"));
}

TEST_F(MenuBarTest, EachEntryPerformsItsAction)
{
    MenuBarVM model(machine.platform());
    std::vector<MenuAction> performed;
    const MenuBar menuBar(model, machine.platform(),
        {.perform = [&](MenuAction action) { performed.push_back(action); }});
    for (QAction* entry : menuBar.shownMenu().actions()) {
        if (entry->isVisible()) {
            entry->trigger();
        }
    }
    using enum MenuAction;
    EXPECT_THAT(performed,
        ElementsAre(showAlerts, showToday, refresh, toggleLoginItem, quit)); // no tokens, no entry
}

TEST_F(MenuBarTest, SaysTheWayInWhenThereIsNoTray)
{
    MenuBarVM model(machine.platform());
    MenuBar menuBar(model, machine.platform(), {});
    menuBar.show();
    EXPECT_THAT(machine.notices.told(), ElementsAre(testing::HasSubstr("没有托盘，不显示图标")));
}

TEST_F(MenuBarTest, TheIconHasAllSizesAndAPlateOfItsOwn)
{
    EXPECT_THAT(menuBarIcon("12h34m", false).availableSizes(),
        testing::UnorderedElementsAre(QSize(16, 16), QSize(22, 22), QSize(24, 24), QSize(32, 32),
            QSize(48, 48), QSize(64, 64)));
    for (const int size : {16, 22, 64}) {
        const QImage calm = menuBarPixmap("12h34m", false, size).toImage();
        const QImage warning = menuBarPixmap("12h34m", true, size).toImage();
        const QColor calmPlate = calm.pixelColor(size / 2, 1);
        const QColor warningPlate = warning.pixelColor(size / 2, 1);
        EXPECT_EQ(calm.pixelColor(0, 0).alpha(), 0) << size;
        EXPECT_EQ(calmPlate.alpha(), 255) << size;
        EXPECT_LT(calmPlate.lightness(), 150) << size;
        EXPECT_GT(warningPlate.red(), 180) << size;
        EXPECT_LT(warningPlate.green(), 80) << size;
    }
}

TEST_F(MenuBarTest, TheHoursStandOverTheMinutes)
{
    const QImage hours = menuBarPixmap("12h34m", false, 64).toImage();
    const QImage others = menuBarPixmap("12h58m", false, 64).toImage();
    EXPECT_EQ(hours.copy(0, 0, 64, 30), others.copy(0, 0, 64, 30));
    EXPECT_NE(hours.copy(0, 34, 64, 30), others.copy(0, 34, 64, 30));
}

TEST_F(MenuBarTest, TheSmallestIconShowsOneShortFigure)
{
    const auto small = [](const char* label) { return menuBarPixmap(label, false, 16).toImage(); };
    EXPECT_EQ(small("4h47m"), small("4h05m"));
    EXPECT_NE(small("4h47m"), small("5h47m"));
    EXPECT_NE(small("0h47m"), small("0h46m"));
    EXPECT_EQ(small("0h47m"), small("47m"));
    const QImage two = menuBarPixmap("4h47m", false, 22).toImage();
    EXPECT_NE(two, menuBarPixmap("4h05m", false, 22).toImage());
}

} // namespace
} // namespace quillbrook
