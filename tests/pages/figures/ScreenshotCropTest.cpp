#include "pages/figures/ScreenshotCrop.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(ScreenshotCrop, TakesTheSidebarsWidthOffAtTheLeft)
{
    EXPECT_EQ(screenshotCrop({1000, 680}), (Rect{220, 0, 780, 680}));
    EXPECT_EQ(screenshotCrop({621, 680}), (Rect{220, 0, 401, 680}));
}

TEST(ScreenshotCrop, IsNeverNarrowerThan400)
{
    EXPECT_EQ(screenshotCrop({620, 680}), (Rect{220, 0, 400, 680}));
    EXPECT_EQ(screenshotCrop({619, 680}), (Rect{220, 0, 400, 680}));
    EXPECT_EQ(screenshotCrop({500, 680}), (Rect{220, 0, 400, 680}));
    EXPECT_EQ(screenshotCrop({0, 0}), (Rect{220, 0, 400, 0}));
}

TEST(ScreenshotCrop, KeepsTheFullHeight)
{
    EXPECT_EQ(screenshotCrop({960, 1}).height, 1);
    EXPECT_EQ(screenshotCrop({960, 4000}).height, 4000);
}

} // namespace
} // namespace quillbrook
