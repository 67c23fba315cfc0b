#include "pages/kit/Frames.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QWidget>

namespace quillbrook {
namespace {

class FramesTest : public testing::Test {
protected:
    bool isMoving = true;
    QWidget widget{};
    Frames& frames = *new Frames(&widget, [this] { return isMoving; });
};

TEST_F(FramesTest, RunOnlyWhileTheWidgetIsOnScreen)
{
    frames.begin();
    EXPECT_FALSE(frames.areRunning());
    widget.show();
    EXPECT_TRUE(frames.areRunning());
    widget.hide();
    EXPECT_FALSE(frames.areRunning());
    widget.show();
    EXPECT_TRUE(frames.areRunning());
}

TEST_F(FramesTest, RunOnlyWhileSomethingMoves)
{
    isMoving = false;
    widget.show();
    EXPECT_FALSE(frames.areRunning());
    frames.begin();
    EXPECT_FALSE(frames.areRunning());
    isMoving = true;
    frames.begin();
    EXPECT_TRUE(frames.areRunning());
    isMoving = false;
    while (frames.areRunning()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace
} // namespace quillbrook
