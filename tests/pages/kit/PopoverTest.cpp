#include "pages/kit/Popover.h"

#include "pages/kit/IconButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "support/Elements.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
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
    EXPECT_EQ(popover.width(), 380);
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
    EXPECT_EQ(
        popover.height(), text->heightForWidth(text->width()) + 40 + 2 * popover.frameWidth());
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
