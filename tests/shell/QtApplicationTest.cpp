#include "shell/QtApplication.h"
#include "platform/virtual/VirtualWindowActivation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

namespace quillbrook {
namespace {

using testing::ElementsAre;

class QtApplicationTest : public testing::Test {
protected:
    static VirtualWindowActivation::Request requestFor(const QWidget& window)
    {
        return {.window = window.winId()};
    }

    VirtualWindowActivation windowActivation{};
    int stylings = 0;
    QtApplication application{windowActivation, [this] { ++stylings; }};
};

TEST_F(QtApplicationTest, OnlyAWindowOnTheScreenCountsAsVisible)
{
    EXPECT_FALSE(application.hasVisibleWindows());
    QWidget window;
    EXPECT_FALSE(application.hasVisibleWindows());
    window.show();
    EXPECT_TRUE(application.hasVisibleWindows());
    window.showMinimized();
    EXPECT_FALSE(application.hasVisibleWindows());
}

TEST_F(QtApplicationTest, TheIconOfATrayAndAMenuAreNoWindows)
{
    QWidget icon(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    QWidget menu(nullptr, Qt::Popup);
    icon.show();
    menu.show();
    EXPECT_FALSE(application.hasVisibleWindows());
    application.activate();
    EXPECT_THAT(windowActivation.requests(), ElementsAre());
}

TEST_F(QtApplicationTest, StylesABoxBeforeItIsShown)
{
    QTimer::singleShot(0, [this] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(stylings, 1);
        EXPECT_FALSE(box->windowIcon().isNull());
        box->buttons().at(1)->click();
    });
    EXPECT_EQ(
        application.runAlert({.firstButton = "1", .secondButton = "2"}), AlertAnswer::secondButton);
}

TEST_F(QtApplicationTest, BringsTheWindowThatWasMadeKey)
{
    QWidget first;
    QWidget second;
    first.show();
    second.show();
    application.makeKey(first.winId());
    application.activate();
    EXPECT_THAT(windowActivation.requests(), ElementsAre(requestFor(first)));
    application.makeKey(second.winId());
    application.activate();
    EXPECT_THAT(windowActivation.requests(), ElementsAre(requestFor(first), requestFor(second)));
}

TEST_F(QtApplicationTest, BringsABoxBehindTheWindowThatItBelongsTo)
{
    QWidget window;
    window.show();
    application.makeKey(window.winId());
    QDialog box(&window);
    box.setModal(true);
    box.show();
    application.activate();
    EXPECT_THAT(windowActivation.requests(), ElementsAre(requestFor(window), requestFor(box)));
}

TEST_F(QtApplicationTest, TellsTheLaunchOnlyWhileItActsForIt)
{
    QWidget window;
    window.show();
    {
        const auto request = application.actFor("panel_TIME5");
        application.activate();
    }
    application.activate();
    EXPECT_EQ(windowActivation.requests().at(0).startupId, "panel_TIME5");
    EXPECT_EQ(windowActivation.requests().at(1).startupId, "");
}

} // namespace
} // namespace quillbrook
