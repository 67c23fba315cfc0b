#include "pages/marks/LabelThinning.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ExtentAround, LiesInTheMiddleOverItsPoint)
{
    EXPECT_EQ(extentAround(50, 20, 100), (Extent{40, 60}));
}

TEST(ExtentAround, StaysInThePicture)
{
    EXPECT_EQ(extentAround(4, 20, 100), (Extent{0, 20}));
    EXPECT_EQ(extentAround(99, 20, 100), (Extent{80, 100}));
    EXPECT_EQ(extentAround(30, 140, 100), (Extent{0, 100}));
}

TEST(LabelsThatFit, KeepTheFirstAndWhatDoesNotTouchTheLast)
{
    // The second touches the first; the third keeps 4 from the first, not from the second.
    const std::vector<Extent> labels{{0, 20}, {15, 35}, {24, 44}, {47.9, 60}, {48, 60}};
    EXPECT_THAT(labelsThatFit(labels, 4), ElementsAre(0, 2, 4));
}

TEST(LabelsThatFit, MayRunDownwards)
{
    const std::vector<Extent> labels{{90, 100}, {85, 95}, {80, 90}, {60, 70}};
    EXPECT_THAT(labelsThatFit(labels, 0), ElementsAre(0, 2, 3));
}

TEST(LabelsThatFit, AreNoneOfNone)
{
    EXPECT_THAT(labelsThatFit({}, 4), IsEmpty());
}

} // namespace
} // namespace quillbrook
