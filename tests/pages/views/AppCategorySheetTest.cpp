#include "pages/views/AppCategorySheet.h"

#include "categories/CategoryStore.h"
#include "categories/SeedTables.h"
#include "pages/kit/MarkList.h"
#include "pages/kit/SearchField.h"
#include "pages/views/CategoryPickerSheet.h"
#include "pages/views/HabitView.h"
#include "support/PagesFixture.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QLineEdit>
#include <QPointer>

#include <filesystem>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// A list sheet over a store with a browser, an editor and one without an identifier.
class AppCategorySheetTest : public PagesFixture {
protected:
    AppCategorySheetTest()
    {
        store.exec(R"(
            BEGIN;
            CREATE TABLE categories (id INTEGER PRIMARY KEY, key TEXT, label TEXT, color TEXT);
            CREATE TABLE app_categories (match_key TEXT, match_type TEXT, category_id INTEGER,
                source TEXT, updated_at REAL, UNIQUE(match_key, match_type));
            CREATE TABLE app_sessions (app_name TEXT, bundle_id TEXT);
            INSERT INTO app_sessions VALUES ('Safari', 'com.apple.Safari'),
                ('editor', 'org.example.editor'), ('Nameless', NULL);)");
        const auto exec = [this](const std::string& sql) { store.exec(sql); };
        CategoryStore::seedCategories(exec);
        CategoryStore::seedAppPrefixes(exec);
        exec("COMMIT");
    }

    void open()
    {
        sheet = std::make_unique<AppCategorySheet>(platform, nullptr);
        sheet->open();
        settle();
    }

    /// Opens the sheet, and lets it load.
    void openLoaded()
    {
        open();
        machine.runFor(1);
        settle();
    }

    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    MarkList& rows() const { return *sheet->findChild<MarkList*>(); }

    CategoryPickerSheet* picker() const { return sheet->findChild<CategoryPickerSheet*>(); }

    /// Presses the row of that name, and what that opens has the keys.
    void pick(const std::string& name)
    {
        const auto names = rowNames();
        rows().press(static_cast<int>(std::ranges::find(names, name) - names.begin()));
        settle();
    }

    std::vector<std::string> rowNames() const { return namesOf(listed()); }

    std::vector<Element> listed() const { return elementsOf(*sheet, QAccessible::ListItem); }

    std::vector<std::string> texts() const
    {
        return namesOf(elementsOf(*sheet, QAccessible::StaticText));
    }

    StoreReader store{directory.path() / "monitor.db"};
    std::unique_ptr<AppCategorySheet> sheet{};
};

TEST_F(AppCategorySheetTest, HasItsSizeAndItsPartsInOrder)
{
    openLoaded();
    EXPECT_EQ(sheet->size(), QSize(480, 560));
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_THAT(texts(), ElementsAre("App 分类管理"));
    EXPECT_THAT(namesOf(elementsOf(*sheet, QAccessible::Button)), ElementsAre("完成"));
    EXPECT_THAT(
        namesOf(elementsOf(*sheet, QAccessible::EditableText)), ElementsAre("搜索 App 名称..."));
    EXPECT_THAT(listed(),
        ElementsAre(Element{QAccessible::ListItem, "editor", "org.example.editor, 未分类"},
            Element{QAccessible::ListItem, "Nameless", "unknown, 未分类"},
            Element{QAccessible::ListItem, "Safari", "com.apple.Safari, 浏览器"}));
}

TEST_F(AppCategorySheetTest, PaintsTheWheelBeforeItLoads)
{
    open();
    const QImage painted = sheet->grab().toImage();
    EXPECT_THAT(texts(), ElementsAre("App 分类管理", "加载中..."));
    EXPECT_THAT(rowNames(), IsEmpty());
    machine.runFor(0); // what runs at once is still before the frame
    EXPECT_THAT(texts(), Contains("加载中..."));
    machine.runFor(1);
    settle();
    EXPECT_THAT(texts(), Not(Contains("加载中...")));
    EXPECT_NE(sheet->grab().toImage(), painted);
}

TEST_F(AppCategorySheetTest, ASheetThatIsClosedBeforeItLoadsLoadsNothing)
{
    open();
    sheet.reset();
    machine.runFor(1);
}

TEST_F(AppCategorySheetTest, TypingSearchesTheNames)
{
    openLoaded();
    auto* editor = sheet->findChild<QLineEdit*>();
    EXPECT_EQ(sheet->focusWidget(), editor);
    editor->insert("EDIT");
    EXPECT_THAT(rowNames(), ElementsAre("editor"));
    editor->insert("X");
    EXPECT_THAT(texts(), ElementsAre("App 分类管理", "无匹配结果"));
    button(*sheet, "清空搜索").click();
    EXPECT_THAT(rowNames(), ElementsAre("editor", "Nameless", "Safari"));
}

TEST_F(AppCategorySheetTest, WhatIsTypedWhileItLoadsIsSought)
{
    open();
    sheet->findChild<QLineEdit*>()->insert("saf");
    EXPECT_THAT(texts(), Contains("加载中..."));
    machine.runFor(1);
    EXPECT_THAT(rowNames(), ElementsAre("Safari"));
}

TEST_F(AppCategorySheetTest, SaysWhenThereIsNoApplicationAtAll)
{
    store.exec("DELETE FROM app_sessions");
    openLoaded();
    EXPECT_THAT(texts(), ElementsAre("App 分类管理", "暂无 App 数据"));
}

TEST_F(AppCategorySheetTest, SaysTheSameWithoutAStore)
{
    std::filesystem::remove_all(directory.path());
    openLoaded();
    EXPECT_THAT(texts(), ElementsAre("App 分类管理", "暂无 App 数据"));
}

TEST_F(AppCategorySheetTest, PressingARowOpensThePickerOverIt)
{
    openLoaded();
    pick("Safari");
    ASSERT_NE(picker(), nullptr);
    EXPECT_EQ(picker()->size(), QSize(360, 400));
    EXPECT_EQ(picker()->windowModality(), Qt::WindowModal);
    EXPECT_THAT(namesOf(elementsOf(*picker(), QAccessible::StaticText)),
        ElementsAre("「Safari」的分类", "当前：浏览器"));
    const auto buttons = elementsOf(*picker(), QAccessible::Button);
    ASSERT_EQ(buttons.size(), 13U);
    EXPECT_EQ(buttons[0].name, "取消");
    for (std::size_t place = 0; place < 12; ++place) {
        EXPECT_EQ(buttons[place + 1].name, selectableCategories()[place].label);
        EXPECT_EQ(buttons[place + 1].value, place == 1 ? "checked" : "");
    }
}

TEST_F(AppCategorySheetTest, ThePickerBeginsAtThePresentCategory)
{
    store.exec("INSERT INTO app_categories VALUES ('org.example.editor', 'exact', 13, 'user', 0)");
    openLoaded();
    pick("editor");
    auto& choices = *picker()->findChild<MarkList*>();
    EXPECT_EQ(choices.currentRow(), 11);
    EXPECT_TRUE(choices.viewport()->rect().contains(choices.rowPlace(11)));
    EXPECT_EQ(picker()->focusWidget(), &choices);
}

TEST_F(AppCategorySheetTest, AChoiceIsWrittenMarkedAndShown)
{
    openLoaded();
    pick("Safari");
    press(*picker()->findChild<MarkList*>(), Qt::Key_Home);
    press(*picker()->findChild<MarkList*>(), Qt::Key_Return);
    settle();
    EXPECT_EQ(picker(), nullptr);
    EXPECT_EQ(listed()[2].value, "com.apple.Safari, 开发工具, 自选");
    EXPECT_THAT(store.rows("SELECT match_key, category_id FROM app_categories "
                           "WHERE source = 'user'"),
        ElementsAre("com.apple.Safari|1"));
}

TEST_F(AppCategorySheetTest, TheRestoreButtonGivesBackTheRuleAndGoes)
{
    store.exec("INSERT INTO app_categories VALUES ('com.apple.Safari', 'exact', 13, 'user', 0)");
    openLoaded();
    pick("Safari");
    EXPECT_THAT(namesOf(elementsOf(*picker(), QAccessible::StaticText)), Contains("当前：理财"));
    button(*picker(), "恢复系统默认").click();
    settle();
    EXPECT_EQ(picker(), nullptr);
    EXPECT_EQ(listed()[2].value, "com.apple.Safari, 浏览器");
    pick("Safari");
    EXPECT_THAT(namesOf(elementsOf(*picker(), QAccessible::Button)), Not(Contains("恢复系统默认")));
}

TEST_F(AppCategorySheetTest, CancellingAndEscapeChangeNothing)
{
    openLoaded();
    pick("Safari");
    button(*picker(), "取消").click();
    settle();
    EXPECT_EQ(picker(), nullptr);
    pick("Safari");
    press(*picker()->focusWidget(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(picker(), nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_THAT(store.rows("SELECT * FROM app_categories WHERE source = 'user'"), IsEmpty());
}

TEST_F(AppCategorySheetTest, EscapeAndTheButtonCloseIt)
{
    openLoaded();
    press(*sheet->findChild<QLineEdit*>(), Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
    openLoaded();
    press(rows(), Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
    openLoaded();
    button(*sheet, "完成").click();
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(AppCategorySheetTest, KeysGoFromTheFieldThroughTheListToTheButton)
{
    openLoaded();
    sheet->activateWindow();
    auto* editor = sheet->findChild<QLineEdit*>();
    press(*editor, Qt::Key_Down);
    EXPECT_EQ(sheet->focusWidget(), &rows());
    EXPECT_EQ(rows().currentRow(), 0);
    editor->setFocus();
    std::vector<std::string> stops;
    editor->insert("a");
    for (int step = 0; step < 4; ++step) {
        press(*sheet->focusWidget(), Qt::Key_Tab);
        stops.push_back(sheet->focusWidget()->accessibleName().toStdString());
    }
    EXPECT_THAT(stops, ElementsAre("清空搜索", "App", "完成", "搜索 App 名称..."));
}

TEST_F(AppCategorySheetTest, TheListStaysWhereItIsAfterAChoice)
{
    for (int app = 0; app < 40; ++app) {
        const std::string number = std::to_string(100 + app);
        store.exec("INSERT INTO app_sessions VALUES ('a" + number + "', 'id" + number + "')");
    }
    openLoaded();
    press(rows(), Qt::Key_End);
    pick("a139");
    const QRect before = rows().rowPlace(39);
    press(*picker()->findChild<MarkList*>(), Qt::Key_Return);
    settle();
    EXPECT_EQ(rows().rowPlace(39), before);
    sheet->findChild<SearchField*>()->setText("a1");
    EXPECT_EQ(rows().rowPlace(0).top(), 0);
}

TEST_F(AppCategorySheetTest, AStoreThatGoesAwayLeavesTheListAsItIs)
{
    openLoaded();
    pick("Safari");
    std::filesystem::remove_all(directory.path());
    press(*picker()->findChild<MarkList*>(), Qt::Key_Home);
    press(*picker()->findChild<MarkList*>(), Qt::Key_Return);
    settle();
    EXPECT_EQ(listed()[2].value, "com.apple.Safari, 浏览器");
}

TEST_F(AppCategorySheetTest, TheHabitPageOpensItAndRefreshesWhenItCloses)
{
    const auto page = shownPage<HabitView>({});
    machine.runFor(0);
    button(*page, "管理App分类").click();
    auto* over = page->findChild<AppCategorySheet*>();
    ASSERT_NE(over, nullptr);
    EXPECT_TRUE(over->isModal());
    int refreshes = 0;
    const auto counting = provider.isLoading.observe([&](bool is) { refreshes += is ? 1 : 0; });
    settle();
    EXPECT_EQ(refreshes, 0);
    button(*over, "完成").click();
    EXPECT_EQ(refreshes, 1);
    settle();
    EXPECT_EQ(page->findChild<AppCategorySheet*>(), nullptr);
}

} // namespace
} // namespace quillbrook
