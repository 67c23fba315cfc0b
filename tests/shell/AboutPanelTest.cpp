#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "platform/virtual/VirtualApplication.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/AboutPanelController.h"
#include "support/Elements.h"
#include "support/Painting.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

#include <algorithm>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;

class AboutPanelTest : public testing::Test {
protected:
    QWidget& shown()
    {
        panel.show();
        QCoreApplication::processEvents();
        return *panel.shownWindow();
    }

    std::vector<std::string> textsShown()
    {
        return namesOf(elementsOf(shown(), QAccessible::StaticText));
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600};
    VirtualApplication application{};
    int quits = 0;
    AboutPanelController panel{machine.platform(), application, [this] { ++quits; }};
};

TEST_F(AboutPanelTest, SaysWhichReleaseThisIs)
{
    machine.bundleValues.set("CFBundleShortVersionString", "2.3.4");
    machine.bundleValues.set("BuildDate", "2026-03-01");
    EXPECT_THAT(textsShown(),
        ElementsAre("Quillbrook", "墨川 · 墨川书影", "v2.3.4", "构建于 2026-03-01",
            "cn.tarnlow.quillbrook", "Quillbrook 作者 · MIT 许可证"));
}

TEST_F(AboutPanelTest, ShowsTodayForAPackageWithoutBuildDate)
{
    EXPECT_THAT(textsShown(), Contains("构建于 2026-01-01"));
}

TEST_F(AboutPanelTest, ShowsAVersionForAPackageWithoutOne)
{
    EXPECT_THAT(textsShown(), Contains("v0.13.0"));
}

TEST_F(AboutPanelTest, IsASmallWindowThatCanOnlyBeClosed)
{
    const QWidget& window = shown();
    EXPECT_EQ(window.windowTitle(), "关于 Quillbrook");
    EXPECT_EQ(window.size(), QSize(400, 280));
    EXPECT_EQ(window.minimumSize(), window.maximumSize());
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_EQ(window.windowModality(), Qt::NonModal);
    const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
    EXPECT_EQ(window.geometry().center(), middle);
}

TEST_F(AboutPanelTest, HasItsSymbolAndItsChipsInTheirColors)
{
    const Painting painting = paintingOf(shown());
    const auto countOf = [&](SystemColor color, double opacity) {
        const QRgb sought
            = Look::faded(Look::color(color, panel.shownWindow()->palette()), opacity).rgba();
        return std::ranges::count_if(painting.shapes,
            [sought](const Painting::Shape& shape) { return shape.fill.rgba() == sought; });
    };
    EXPECT_GT(countOf(SystemColor::blue, 0.1), 0);
    EXPECT_GT(countOf(SystemColor::orange, 0.1), 0);
    EXPECT_TRUE(painting.hasFilled(Symbol::outline("chart.bar.doc.horizontal"),
        Look::color(SystemColor::blue, panel.shownWindow()->palette())));
}

TEST_F(AboutPanelTest, TheOpenOneComesToTheFront)
{
    const QWidget* window = &shown();
    machine.bundleValues.set("CFBundleShortVersionString", "2.3.4");
    application.setActivationPolicy(ActivationPolicy::accessory);
    EXPECT_EQ(&shown(), window);
    EXPECT_THAT(textsShown(), Contains("v0.13.0")); // as it was
    EXPECT_EQ(application.keyWindow(), window->winId());
    EXPECT_EQ(application.activationCount(), 3);
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::accessory);
}

TEST_F(AboutPanelTest, AClosedOneGivesWayToANewOne)
{
    QPointer<QWidget> first = &shown();
    EXPECT_TRUE(first->close());
    EXPECT_NE(first, nullptr); // kept until then
    machine.bundleValues.set("CFBundleShortVersionString", "2.3.4");
    EXPECT_THAT(textsShown(), Contains("v2.3.4"));
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(application.keyWindow(), panel.shownWindow()->winId());
}

TEST_F(AboutPanelTest, ShowsTheProgramAndLeavesItShownWhenItCloses)
{
    shown();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
    EXPECT_EQ(application.activationCount(), 1);
    panel.shownWindow()->close();
    machine.runFor(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
}

TEST_F(AboutPanelTest, TakesTheKeysThatCloseAndQuit)
{
    const auto trigger = [this](const QKeySequence& keys) {
        for (QAction* action : shown().actions()) {
            if (action->shortcut() == keys) {
                action->trigger();
            }
        }
        return panel.shownWindow()->isVisible();
    };
    EXPECT_FALSE(trigger(Qt::Key_Escape));
    EXPECT_FALSE(trigger(QKeySequence(Qt::CTRL | Qt::Key_W)));
    EXPECT_TRUE(trigger(QKeySequence(Qt::CTRL | Qt::Key_Q)));
    EXPECT_EQ(quits, 1);
}

} // namespace
} // namespace quillbrook
