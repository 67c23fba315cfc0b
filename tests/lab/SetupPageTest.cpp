#include "support/LabRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include <string>

namespace quillbrook {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SetupPageTest : public testing::Test {
protected:
    LabResult page(const std::string& options)
    {
        return lab.run("page --data " + lab.path("data") + " --tab Setup " + options);
    }

    /// What is read with these options.
    std::string text(const std::string& options)
    {
        EXPECT_EQ(page("--text " + lab.path("text") + " " + options).status, 0);
        return lab.read("text");
    }

    static std::string button(const std::string& name)
    {
        return R"({"role": "button", "name": ")" + name + '"';
    }

    static std::string words(const std::string& name)
    {
        return R"({"role": "text", "name": ")" + name + '"';
    }

    LabRun lab{};
};

TEST_F(SetupPageTest, StandsReadyToBegin)
{
    const std::string found = text("");
    EXPECT_THAT(found,
        StartsWith(R"({"role": "window", "name": "Quillbrook 初始设置", "value": "", )"
                   R"("rect": [0, 0, 500, 560]})"));
    EXPECT_THAT(found, HasSubstr(words("欢迎使用 Quillbrook")));
    EXPECT_THAT(found, HasSubstr(button("开始使用 Quillbrook")));
    EXPECT_EQ(text("--trusted true"), found);
}

TEST_F(SetupPageTest, LeadsToThePermissionThroughTheSettings)
{
    const std::string found = text("--trusted false");
    EXPECT_THAT(found, HasSubstr(button("打开系统设置")));
    EXPECT_THAT(found, HasSubstr(button("在 Finder 中显示 App 位置")));
    EXPECT_THAT(found, HasSubstr(button("跳过（键盘监控不可用）")));
    EXPECT_THAT(found, Not(HasSubstr("开始使用")));
    EXPECT_EQ(text("--trusted false --new-version"), found);
}

TEST_F(SetupPageTest, WarnsAfterAnUpdate)
{
    const std::string found = text("--new-version");
    EXPECT_THAT(found, HasSubstr(words("检测到应用已更新")));
    EXPECT_THAT(found, HasSubstr(button("重置旧授权")));
    EXPECT_THAT(found, Not(HasSubstr("跳过")));
}

TEST_F(SetupPageTest, Resets)
{
    EXPECT_EQ(text("--new-version --reset ok"), text("--trusted false"));
    EXPECT_EQ(text("--new-version --reset failed"), text("--new-version"));
}

TEST_F(SetupPageTest, DrawsInItsOwnSize)
{
    EXPECT_EQ(page("--dark --scale 1.5 --png " + lab.path("p.png")).status, 0);
    EXPECT_EQ(QImage(QString::fromStdString(lab.path("p.png"))).size(), QSize(750, 840));
}

TEST_F(SetupPageTest, TurnsWrongArgumentsDown)
{
    EXPECT_EQ(page("--trusted yes").status, 2);
    EXPECT_EQ(page("--new-version --reset maybe").status, 2);
    EXPECT_EQ(page("--reset ok").status, 2);
    EXPECT_EQ(page("--new-version --trusted false --reset ok").status, 2);
    EXPECT_EQ(page("--period 今日").status, 2);
    EXPECT_EQ(page("--pick a").status, 2);
    EXPECT_EQ(page("--scale 9").status, 2);
    const std::string today = "page --data " + lab.path("data") + " --tab Today ";
    EXPECT_EQ(lab.run(today + "--trusted true").status, 2);
    EXPECT_EQ(lab.run(today + "--reset ok").status, 2);
    EXPECT_EQ(lab.run(today + "--new-version").status, 2);
    EXPECT_THAT(page("--trusted yes").errors, StartsWith("quillbrook-lab: arguments:"));
}

} // namespace
} // namespace quillbrook
