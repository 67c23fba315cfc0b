#include "platform/linux/shells/SwayJson.h"

#include "base/Text.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(SwayJson, TellsTheFocusedWindowOfWayland)
{
    const auto window = focusedWindowOfEvent(R"({"change": "focus", "container":
        {"app_id": "foot", "pid": 42, "focused": true}})");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->traits, (WindowTraits{.className = "foot", .applicationId = "foot"}));
    EXPECT_EQ(window->process, 42);
}

TEST(SwayJson, TellsTheClassOfAProgramOfX11)
{
    const auto window = focusedWindowOfEvent(R"({"change": "focus", "container": {"app_id": null,
        "pid": 42, "window_properties": {"class": "XTerm", "instance": "xterm"}}})");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->traits, (WindowTraits{.instance = "xterm", .className = "XTerm"}));
}

TEST(SwayJson, OtherChangesAreNoFocus)
{
    for (const char* json : {R"({"change": "title", "container": {"app_id": "foot", "pid": 42}})",
             R"({"change": "close", "container": {"app_id": "foot", "pid": 42}})",
             R"({"change": "focus", "container": {"app_id": "foot"}})", R"({"change": "focus"})",
             "[]", "", "{", "\xFF\xFE"}) {
        EXPECT_FALSE(focusedWindowOfEvent(json)) << json;
    }
}

TEST(SwayJson, FindsTheFocusedWindowInTheTree)
{
    const auto window = focusedWindowOfTree(R"({"type": "root", "nodes": [{"nodes": [
        {"app_id": "gedit", "pid": 1, "focused": false}],
        "floating_nodes": [{"app_id": "foot", "pid": 2, "focused": true}]}]})");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->process, 2);
    EXPECT_FALSE(focusedWindowOfTree(R"({"nodes": [{"type": "workspace", "focused": true}]})"));
    EXPECT_FALSE(focusedWindowOfTree("nonsense"));
}

TEST(SwayJson, CutsIdsBeyondMeasure)
{
    const auto window = focusedWindowOfEvent(R"({"change": "focus", "container": {"pid": 1,
        "app_id": ")"
        + std::string(10'000, 'x') + R"("}})");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->traits.className, std::string(4096, 'x'));
    // What is no text of Unicode's is still made one.
    const auto broken = focusedWindowOfEvent(
        R"({"change": "focus", "container": {"pid": 1, "app_id": "a\ud800"}})");
    EXPECT_TRUE(!broken || isValidUtf8(broken->traits.className));
}

TEST(SwayJson, TellsTheLayoutOfKeyboards)
{
    EXPECT_EQ(layoutOfEvent(R"({"change": "xkb_layout", "input":
        {"type": "keyboard", "xkb_active_layout_name": "German"}})"),
        "German");
    EXPECT_EQ(layoutOfInputs(R"json([{"type": "pointer"},
        {"type": "keyboard", "xkb_active_layout_name": "English (US)"}])json"),
        "English (US)");
    EXPECT_FALSE(layoutOfInputs("[]"));
    EXPECT_FALSE(layoutOfEvent(R"({"input": {"type": "keyboard"}})"));
}

} // namespace
} // namespace quillbrook
