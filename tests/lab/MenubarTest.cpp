#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace quillbrook {
namespace {

using testing::HasSubstr;

class MenubarTest : public testing::Test {
protected:
    LabResult menubar(const std::string& options)
    {
        return lab.run("menubar --data " + lab.path("data") + " " + options);
    }

    LabRun lab{};
};

TEST_F(MenubarTest, PrintsTheInitialValuesWithoutAStore)
{
    const LabResult result = menubar("--trusted false");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output,
        R"({"activeHoursStr":"--","alertCount":0,"tokenCount":0,"tokenCountStr":"0",)"
        R"("permissionMissing":false,"yearProgressPct":0,"warning":false,"fastTimer":false,)"
        R"("menu":["Alerts：0","Hours：--",null,"刷新数据",null,"开机自启：关","退出"]})"
        "\n");
    EXPECT_FALSE(std::filesystem::exists(lab.path("data")));
}

TEST_F(MenubarTest, PrintsOneRefreshOfAStore)
{
    lab.write("s.jsonl", R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":55,"input":0}
{"at":70,"keys":5000}
{"at":200,"engine":"stop"}
)");
    ASSERT_EQ(lab.run("replay " + lab.path("s.jsonl") + " --data " + lab.path("data")).status, 0);
    const LabResult result
        = menubar("--now 1767225900.5 --zone -3600 --trusted false --login-item on");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output,
        R"({"activeHoursStr":"0h2m","alertCount":0,"tokenCount":1240,"tokenCountStr":"1,240",)"
        R"("permissionMissing":true,"yearProgressPct":1,"warning":true,"fastTimer":true,)"
        R"("menu":["Alerts：0","Hours：0h2m","Tokens：1,240",null,"刷新数据",null,)"
        R"("开机自启：开","退出"]})"
        "\n");
}

TEST_F(MenubarTest, RefusesValuesThatItDoesNotKnow)
{
    for (const std::string option :
        {"--trusted maybe", "--login-item true", "--zone 0.5", "--zone 100000", "--now soon"}) {
        const LabResult result = menubar(option);
        EXPECT_EQ(result.status, 2) << option;
        EXPECT_THAT(result.errors, HasSubstr("quillbrook-lab: arguments:5: ")) << option;
        EXPECT_EQ(result.output, "") << option;
    }
    EXPECT_EQ(lab.run("menubar").status, 2);
    EXPECT_THAT(lab.run("menubar --help").output, HasSubstr("usage: quillbrook-lab menubar"));
}

} // namespace
} // namespace quillbrook
