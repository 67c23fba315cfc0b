#include "shell/WindowFrame.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(WindowFrame, LeavesRoomForWhatTheWindowManagerPutsRoundIt)
{
    EXPECT_EQ(roomForWindow({0, 24, 1024, 576}), QRect(6, 64, 1012, 530));
}

TEST(WindowFrame, StaysAsItIsWhereThereIsRoom)
{
    const QRect room(6, 40, 1908, 1034);
    EXPECT_EQ(fittedInto({480, 200, 960, 680}, room), QRect(480, 200, 960, 680));
    // Placed so by hand: partly over the edge.
    EXPECT_EQ(fittedInto({1500, 800, 960, 680}, room), QRect(1500, 800, 960, 680));
}

TEST(WindowFrame, IsNoLargerThanASmallScreen)
{
    const QRect room(6, 64, 1012, 530);
    EXPECT_EQ(fittedInto({32, -40, 960, 680}, room), QRect(32, 64, 960, 530));
    EXPECT_EQ(fittedInto({0, 0, 3000, 2000}, room), room);
}

TEST(WindowFrame, KeepsItsTitleBarBelowTheUpperEdge)
{
    EXPECT_EQ(fittedInto({100, 10, 830, 500}, {6, 64, 1012, 530}), QRect(100, 64, 830, 500));
}

} // namespace
} // namespace quillbrook
