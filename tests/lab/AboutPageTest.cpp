#include "base/BuildValues.h"
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

/// The two about surfaces at 2026-01-01 08:30 in UTC+8.
class AboutPageTest : public testing::TestWithParam<std::string> {
protected:
    LabResult page(const std::string& options)
    {
        return lab.run("page --data " + lab.path("data") + " --now 1767227400 " + options);
    }

    /// What is read on the surface with these options.
    std::string text(const std::string& options)
    {
        const LabResult result
            = page("--tab " + GetParam() + " --text " + lab.path("text") + " " + options);
        EXPECT_EQ(result.status, 0) << result.errors;
        return lab.read("text");
    }

    static std::string line(const std::string& text)
    {
        return R"({"role": "text", "name": ")" + text + R"(", "value": "")";
    }

    LabRun lab{};
};

INSTANTIATE_TEST_SUITE_P(Surfaces, AboutPageTest, testing::Values("AboutPanel", "关于"));

TEST_P(AboutPageTest, TellsTheValuesThatAreGiven)
{
    const std::string found = text("--version 2.3.4 --build-date 2026-03-01");
    EXPECT_THAT(found, HasSubstr(line("v2.3.4")));
    EXPECT_THAT(found, HasSubstr(line("构建于 2026-03-01")));
}

TEST_P(AboutPageTest, TellsWhatWasBuilt)
{
    const std::string found = text("");
    EXPECT_THAT(found, HasSubstr(line("v" + std::string(buildVersion()))));
    EXPECT_THAT(found, HasSubstr(line("构建于 " + buildDate().value_or("2026-01-01"))));
}

TEST_P(AboutPageTest, FallsBackForWhatIsMissing)
{
    const std::string found = text("--version none --build-date none");
    EXPECT_THAT(found, HasSubstr(line("v0.13.0")));
    EXPECT_THAT(found, HasSubstr(line("构建于 2026-01-01")));
    EXPECT_THAT(text("--build-date none --zone -28800"), HasSubstr(line("构建于 2025-12-31")));
}

TEST_P(AboutPageTest, TurnsWrongArgumentsDown)
{
    for (const char* option : {"--period 今日", "--csv f", "--search a", "--pick a", "--choose a",
             "--zone x", "--trusted true", "--reset ok", "--new-version"}) {
        EXPECT_EQ(page("--tab " + GetParam() + " " + option).status, 2) << option;
    }
}

using AboutPanelPageTest = AboutPageTest;

INSTANTIATE_TEST_SUITE_P(Panel, AboutPanelPageTest, testing::Values("AboutPanel"));

TEST_P(AboutPanelPageTest, HasItsOwnSize)
{
    const std::string found = text("--dark --scale 1.5 --png " + lab.path("p.png"));
    EXPECT_THAT(found,
        StartsWith(R"({"role": "window", "name": "关于 Quillbrook", "value": "", )"
                   R"("rect": [0, 0, 400, 280]})"));
    EXPECT_EQ(QImage(QString::fromStdString(lab.path("p.png"))).size(), QSize(600, 420));
    EXPECT_EQ(page("--tab AboutPanel --size 960x680").status, 2);
}

using AboutViewPageTest = AboutPageTest;

INSTANTIATE_TEST_SUITE_P(Page, AboutViewPageTest, testing::Values("关于"));

TEST_P(AboutViewPageTest, ListsThePageWithItsLink)
{
    const std::string found = text("");
    EXPECT_THAT(found, HasSubstr(line("墨川·Quillbrook")));
    EXPECT_THAT(found, HasSubstr(line("数据隐私 & 技术栈")));
    EXPECT_THAT(found, HasSubstr(R"({"role": "button", "name": "隐私政策 →", "value": "")"));
    EXPECT_THAT(found, Not(HasSubstr("怎样全部删除"))); // as the sheet stays closed
}

TEST_P(AboutViewPageTest, OnlyTheAboutSurfacesTellTheBuild)
{
    for (const char* tab : {"Today", "Past", "Categories", "Setup"}) {
        for (const char* option : {"--version 1", "--build-date none"}) {
            EXPECT_EQ(page("--tab " + std::string(tab) + " " + option).status, 2) << tab << option;
        }
    }
}

} // namespace
} // namespace quillbrook
