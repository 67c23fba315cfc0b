#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include <string>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The sheets on a store with some minutes in each of two applications.
class CategoriesPageTest : public testing::Test {
protected:
    CategoriesPageTest()
    {
        lab.write("s.jsonl", R"({"front":{"name":"Editor","bundle":"com.apple.dt.Xcode"}}
{"at":0,"engine":"start"}
{"at":59,"input":0}
{"at":300,"front":{"name":"browser","bundle":"com.apple.Safari"}}
{"at":600,"engine":"stop"}
)");
        lab.run("replay " + lab.path("s.jsonl") + " --data " + lab.path("data"));
    }

    LabResult page(const std::string& options)
    {
        return lab.run(
            "page --data " + lab.path("data") + " --now 1767227400.5 --tab Categories " + options);
    }

    /// What is read with these options.
    std::string text(const std::string& options)
    {
        EXPECT_EQ(page("--text " + lab.path("text") + " " + options).status, 0);
        return lab.read("text");
    }

    std::vector<std::string> choices() const
    {
        return StoreReader(lab.path("data") + "/monitor.db")
            .rows("SELECT match_key, match_type, category_id, updated_at FROM app_categories "
                  "WHERE source = 'user'");
    }

    LabRun lab{};
};

TEST_F(CategoriesPageTest, ListsTheApplications)
{
    const std::string found = text("");
    EXPECT_THAT(found,
        StartsWith(R"({"role": "window", "name": "App 分类管理", "value": "", )"
                   R"("rect": [0, 0, 480, 560]})"));
    EXPECT_THAT(found,
        HasSubstr(R"({"role": "row", "name": "browser", "value": "com.apple.Safari, 浏览器")"));
    EXPECT_THAT(found,
        HasSubstr(R"({"role": "row", "name": "Editor", "value": "com.apple.dt.Xcode, 开发工具")"));
    EXPECT_LT(found.find("browser"), found.find("Editor"));
    EXPECT_THAT(found, Not(HasSubstr("加载中...")));
}

TEST_F(CategoriesPageTest, Searches)
{
    EXPECT_THAT(text("--search BROWS"), Not(HasSubstr("Editor")));
    EXPECT_THAT(text("--search 无"), HasSubstr("无匹配结果"));
}

TEST_F(CategoriesPageTest, PicksOverTheList)
{
    const std::string found = text("--pick browser");
    const auto list = found.find(R"({"role": "row", "name": "Editor")");
    const auto picker = found.find(R"({"role": "text", "name": "「browser」的分类")");
    EXPECT_LT(list, picker);
    EXPECT_NE(picker, std::string::npos);
    EXPECT_THAT(found, HasSubstr(R"({"role": "text", "name": "当前：浏览器")"));
    EXPECT_THAT(found, HasSubstr(R"({"role": "button", "name": "浏览器", "value": "checked")"));
    EXPECT_THAT(found, HasSubstr(R"({"role": "button", "name": "游戏", "value": "", )"));
    EXPECT_THAT(found, HasSubstr(R"("rect": [60, 80, 360, 400])"));
    EXPECT_THAT(found, Not(HasSubstr("恢复系统默认")));
    EXPECT_THAT(choices(), testing::IsEmpty());
}

TEST_F(CategoriesPageTest, ChoosesAndRestores)
{
    const std::string found = text("--pick browser --choose 游戏");
    EXPECT_THAT(found,
        HasSubstr(R"({"role": "row", "name": "browser", "value": "com.apple.Safari, 游戏, 自选")"));
    EXPECT_THAT(found, Not(HasSubstr("的分类")));
    EXPECT_THAT(choices(), ElementsAre("com.apple.Safari|exact|10|1767227400.5"));
    EXPECT_THAT(text("--pick browser"), HasSubstr("恢复系统默认"));
    EXPECT_THAT(text("--pick browser --choose 恢复系统默认"),
        HasSubstr(R"("name": "browser", "value": "com.apple.Safari, 浏览器")"));
    EXPECT_THAT(choices(), testing::IsEmpty());
}

TEST_F(CategoriesPageTest, DrawsInItsOwnSize)
{
    EXPECT_EQ(page("--dark --scale 1.5 --pick browser --png " + lab.path("p.png")).status, 0);
    EXPECT_EQ(QImage(QString::fromStdString(lab.path("p.png"))).size(), QSize(720, 840));
}

TEST_F(CategoriesPageTest, ShowsAnEmptyListWithoutAStore)
{
    const LabResult result = lab.run(
        "page --data " + lab.path("none") + " --tab Categories --text " + lab.path("text"));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(lab.read("text"), HasSubstr("暂无 App 数据"));
}

TEST_F(CategoriesPageTest, TurnsWrongArgumentsDown)
{
    EXPECT_EQ(page("--pick Nobody").status, 2);
    EXPECT_EQ(page("--choose 游戏").status, 2);
    EXPECT_EQ(page("--pick browser --choose 未分类").status, 2);
    EXPECT_EQ(page("--pick browser --choose 恢复系统默认").status, 2);
    EXPECT_EQ(page("--period 今日").status, 2);
    EXPECT_EQ(page("--csv " + lab.path("f")).status, 2);
    EXPECT_EQ(page("--scale 9").status, 2);
    EXPECT_EQ(lab.run("page --data " + lab.path("data") + " --tab Today --search a").status, 2);
    EXPECT_THAT(page("--pick Nobody").errors, StartsWith("quillbrook-lab: arguments:"));
}

} // namespace
} // namespace quillbrook
