#include "pages/kit/Popover.h"

#include "pages/kit/IconButton.h"
#include "pages/kit/InfoPopover.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "support/AccessibleEvents.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

namespace quillbrook {
namespace {

/// A click of the mouse on a window, on the way that the desktop's clicks take.
void click(QWidget& window, QPoint place)
{
    const QPointF global = window.mapToGlobal(QPointF(place));
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, QPointF(place), global, Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(window.windowHandle(), &event);
        QApplication::processEvents();
    }
}

TEST(PopoverTest, ClosesWithEscape)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    Popover popover(380, &anchor);
    bool isClosed = false;
    QObject::connect(&popover, &Popover::closed, [&] { isClosed = true; });
    popover.open();
    EXPECT_TRUE(popover.isVisible());
    EXPECT_EQ(popover.body().width(), 380);
    press(popover, Qt::Key_Escape);
    EXPECT_FALSE(popover.isVisible());
    EXPECT_TRUE(isClosed);
}

TEST(PopoverTest, IsAsHighAsItsContent)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    Popover popover(380, &anchor);
    auto* text = textLabel(QString("word ").repeated(40), Look::font(TextStyle::caption));
    text->setWordWrap(true);
    popover.content()->addWidget(text);
    popover.open();
    EXPECT_EQ(text->width(), 340);
    EXPECT_EQ(popover.body().height(), text->heightForWidth(text->width()) + 40);
}

TEST(PopoverTest, PointsAtItsAnchorFromBelow)
{
    QWidget window;
    window.setGeometry(300, 100, 300, 100);
    IconButton anchor("info.circle", 14, "about", &window);
    anchor.move(100, 20);
    window.show();
    Popover popover(200, &anchor);
    popover.open();
    const QPoint tip = popover.mapToGlobal(popover.tip());
    EXPECT_EQ(tip.x(), anchor.mapToGlobal(anchor.rect().center()).x());
    EXPECT_NEAR(tip.y(), anchor.mapToGlobal(QPoint(0, anchor.height())).y(), 2);
    EXPECT_GT(popover.body().top(), popover.tip().y());
}

TEST(PopoverTest, StaysWithinTheScreen)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget window;
    window.setGeometry(screen.right() - 60, screen.bottom() - 60, 60, 60);
    IconButton anchor("info.circle", 14, "about", &window);
    anchor.move(30, 30);
    window.show();
    Popover popover(200, &anchor);
    popover.content()->addWidget(new QLabel("text"));
    popover.open();
    const QRect body(popover.mapToGlobal(popover.body().topLeft()), popover.body().size());
    EXPECT_TRUE(screen.contains(body));
    EXPECT_LT(body.bottom(), anchor.mapToGlobal(QPoint()).y()); // above, where there is room
    EXPECT_GT(popover.tip().y(), popover.body().bottom());
}

TEST(PopoverTest, GivesTheFocusBack)
{
    QWidget window;
    window.resize(300, 100);
    IconButton first("tag", 14, "first", &window);
    IconButton anchor("info.circle", 14, "about", &window);
    window.show();
    first.setFocus();
    {
        Popover popover(200, &anchor);
        popover.open();
        anchor.setFocus(); // whatever happened meanwhile
        press(popover, Qt::Key_Escape);
        EXPECT_FALSE(popover.isVisible());
    }
    EXPECT_EQ(window.focusWidget(), &first);
}

TEST(PopoverTest, IsReadInsideItsAnchorWhileItIsOpen)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    InfoPopover popover({}, &anchor);
    popover.addHeadline("figures");
    popover.addHeadline("more");
    EXPECT_EQ(elementsOf(anchor, QAccessible::Dialog), std::vector<Element>{});
    popover.open();
    EXPECT_EQ(
        namesOf(elementsOf(anchor, QAccessible::Dialog)), std::vector<std::string>{"figures"});
    EXPECT_EQ(namesOf(elementsOf(anchor, QAccessible::StaticText)),
        (std::vector<std::string>{"figures", "more"}));
    QAccessibleInterface& outer = *QAccessible::queryAccessibleInterface(&anchor);
    EXPECT_EQ(outer.indexOfChild(outer.child(0)), 0);
    EXPECT_EQ(outer.child(0)->parent(), &outer);
    press(popover, Qt::Key_Escape);
    EXPECT_EQ(outer.childCount(), 0);
}

TEST(PopoverTest, HasTheFocusWhileItIsOpen)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    Popover popover(200, &anchor);
    const AccessibleEvents events;
    popover.open();
    EXPECT_TRUE(popover.hasFocus());
    EXPECT_THAT(events.of(popover), testing::Contains(QAccessible::Focus));
}

TEST(PopoverTest, IsCutOutWhereWindowsCantBlend)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    Look::setCanBlendWindows([] { return false; });
    Popover popover(200, &anchor);
    popover.open();
    Look::setCanBlendWindows({});
    EXPECT_TRUE(popover.mask().contains(popover.body().center()));
    EXPECT_FALSE(popover.mask().contains(QPoint(1, 1)));
    EXPECT_FALSE(popover.mask().contains(popover.body().topLeft()));
}

TEST(PopoverTest, IsClosedByASecondClickOnItsAnchor)
{
    QWidget window;
    window.resize(300, 100);
    auto* anchor = new IconButton("info.circle", 14, "about", &window);
    window.show();
    int openings = 0;
    QObject::connect(anchor, &IconButton::clicked, [&] {
        ++openings;
        auto* popover = new Popover(200, anchor);
        popover->setAttribute(Qt::WA_DeleteOnClose);
        popover->open();
    });
    const QPoint place = anchor->mapTo(&window, anchor->rect().center());
    click(window, place);
    EXPECT_EQ(openings, 1);
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    click(window, place);
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

} // namespace
} // namespace quillbrook
