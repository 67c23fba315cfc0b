#include "pages/kit/MarkView.h"

#include "pages/kit/Look.h"
#include "pages/kit/MarkPainter.h"
#include "pages/kit/RoundedFill.h"
#include "support/AccessibleEvents.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

Mark bar(std::string name, double x, double width)
{
    return {.shape = Box{{x, 0, width, 40}},
        .fills = {{SystemColor::blue}},
        .role = MarkRole::mark,
        .name = name,
        .value = "3",
        .help = name + " helps"};
}

class MarkViewTest : public testing::Test {
protected:
    MarkViewTest()
    {
        view.resize(100, 40);
        show({bar("first", 0, 10.4), boxMark({20, 0, 5, 5}, {SystemColor::red}),
            bar("second", 10.4, 10.2),
            textMark({.place = {60, 0, 10, 20}, .text = "a long text"})});
        static_cast<QWidget&>(view).show();
    }

    void show(std::vector<Mark> marks)
    {
        view.setPicture([this, marks](Size, const TextWidth&) {
            ++timesMade;
            return marks;
        });
    }

    void hover(double x, double y)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(x, y), view.mapToGlobal(QPointF(x, y)),
            Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&view, &event);
    }

    std::string currentName() const
    {
        return view.currentMark() ? view.marks()[*view.currentMark()].name : "none";
    }

    std::string toolTipAt(QPoint place)
    {
        QHelpEvent event(QEvent::ToolTip, place, view.mapToGlobal(place));
        QApplication::sendEvent(&view, &event);
        return event.isAccepted() ? QToolTip::text().toStdString() : "none";
    }

    /// What was told of the view and its marks, with the child that it was told of.
    std::vector<std::pair<QAccessible::Event, int>> toldOf(const AccessibleEvents& events) const
    {
        std::vector<std::pair<QAccessible::Event, int>> told;
        for (const AccessibleEvents::Told& event : events.all()) {
            if (event.object == &view) {
                told.emplace_back(event.type, event.child);
            }
        }
        return told;
    }

    int timesMade = 0;
    MarkView view{"picture"};
};

TEST_F(MarkViewTest, MakesItsMarksOnceItsSizeIsKnown)
{
    static_cast<QWidget&>(view).hide();
    timesMade = 0;
    show({bar("first", 0, 10)});
    view.resize(120, 40);
    EXPECT_EQ(timesMade, 0);
    static_cast<QWidget&>(view).show();
    EXPECT_EQ(timesMade, 1);
    EXPECT_EQ(view.focusPolicy(), Qt::StrongFocus);
    show({boxMark({0, 0, 5, 5}, {SystemColor::red})});
    EXPECT_EQ(view.focusPolicy(), Qt::NoFocus);
}

TEST_F(MarkViewTest, OffersWhatItPaintsAsChildrenButDecoration)
{
    QAccessibleInterface& interface = *QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(interface.text(QAccessible::Name), "picture");
    ASSERT_EQ(interface.childCount(), 3);
    EXPECT_EQ(interface.child(1)->text(QAccessible::Name), "second");
    EXPECT_EQ(interface.child(1)->text(QAccessible::Value), "3");
    EXPECT_EQ(interface.child(1)->role(), QAccessible::Indicator);
    EXPECT_EQ(interface.child(2)->role(), QAccessible::StaticText);
    EXPECT_EQ(interface.child(0)->rect().width(), 10);
    EXPECT_EQ(interface.child(1)->rect().width(), 11); // neighbours stay neighbours
    EXPECT_EQ(interface.indexOfChild(interface.child(1)), 1);
    EXPECT_EQ(interface.child(3), nullptr);
}

TEST_F(MarkViewTest, TellsOfNothingThatIsGone)
{
    QAccessibleInterface* third = QAccessible::queryAccessibleInterface(&view)->child(2);
    show({bar("only", 0, 10)});
    EXPECT_FALSE(third->isValid());
    EXPECT_EQ(third->text(QAccessible::Name), "");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&view)->childCount(), 1);
}

TEST_F(MarkViewTest, MakesItsMarksOnceForASize)
{
    timesMade = 0;
    hover(5, 5);
    toolTipAt({5, 5});
    view.grab();
    press(view, Qt::Key_Right);
    EXPECT_EQ(timesMade, 0);
    view.resize(120, 40);
    view.grab();
    EXPECT_EQ(timesMade, 1);
}

TEST_F(MarkViewTest, FindsTheMarkUnderThePointer)
{
    hover(5, 5);
    EXPECT_EQ(currentName(), "first");
    hover(10.4, 5);
    EXPECT_EQ(currentName(), "second");
    hover(50, 5);
    EXPECT_EQ(currentName(), "none");
    hover(65, 5); // a text is read, not hovered
    EXPECT_EQ(currentName(), "none");
}

TEST_F(MarkViewTest, FindsTheUppermostOfSeveral)
{
    show({bar("below", 0, 50), bar("above", 10, 10)});
    hover(15, 5);
    EXPECT_EQ(currentName(), "above");
    hover(30, 5);
    EXPECT_EQ(currentName(), "below");
}

TEST_F(MarkViewTest, FindsCurvedShapesByTheirOutline)
{
    Mark dot = bar("dot", 0, 0);
    dot.shape = Circle{{20, 20}, 10};
    show({dot});
    hover(20, 12);
    EXPECT_EQ(currentName(), "dot");
    hover(12, 12); // within the square around it
    EXPECT_EQ(currentName(), "none");
}

TEST_F(MarkViewTest, TellsHelpAndWhatIsCutInItsToolTip)
{
    EXPECT_EQ(toolTipAt({5, 5}), "first helps");
    EXPECT_EQ(toolTipAt({65, 10}), "a long text");
    EXPECT_EQ(toolTipAt({50, 5}), "none");
}

TEST_F(MarkViewTest, IsWalkedByKeys)
{
    EXPECT_EQ(view.focusPolicy(), Qt::StrongFocus);
    press(view, Qt::Key_Right);
    EXPECT_EQ(currentName(), "first");
    press(view, Qt::Key_Down);
    EXPECT_EQ(currentName(), "second");
    press(view, Qt::Key_Right);
    EXPECT_EQ(currentName(), "first");
    press(view, Qt::Key_Left);
    EXPECT_EQ(currentName(), "second");
    press(view, Qt::Key_Home);
    EXPECT_EQ(currentName(), "first");
    press(view, Qt::Key_End);
    EXPECT_EQ(currentName(), "second");
    press(view, Qt::Key_Escape);
    EXPECT_EQ(currentName(), "none");
}

TEST_F(MarkViewTest, IsNoStopForTheTabKeyWithoutMarks)
{
    show({textMark({.place = {0, 0, 10, 10}, .text = "alone"})});
    EXPECT_EQ(view.focusPolicy(), Qt::NoFocus);
}

TEST_F(MarkViewTest, KeepsTheCurrentMarkByItsNameWhenThePictureChanges)
{
    hover(12, 5);
    show({bar("new", 0, 10), bar("second", 30, 10)});
    EXPECT_EQ(currentName(), "second");
    show({bar("new", 0, 10)});
    EXPECT_EQ(currentName(), "none");
}

TEST_F(MarkViewTest, TellsReadersWhichOfItsMarksSpeakOtherwise)
{
    const AccessibleEvents events;
    Mark more = bar("second", 10, 10);
    more.value = "4";
    show({bar("other", 0, 10), more, textMark({.place = {60, 0, 10, 20}, .text = "a long text"})});
    EXPECT_THAT(toldOf(events),
        ElementsAre(
            std::pair(QAccessible::NameChanged, 0), std::pair(QAccessible::DescriptionChanged, 1)));
}

TEST_F(MarkViewTest, TellsReadersThatItHasOtherMarks)
{
    const AccessibleEvents events;
    show({bar("first", 0, 10)});
    EXPECT_THAT(toldOf(events), ElementsAre(std::pair(QAccessible::ObjectReorder, -1)));
}

TEST_F(MarkViewTest, TellsReadersNothingOfMarksThatStandElsewhere)
{
    const AccessibleEvents events;
    show({bar("first", 50, 10), bar("second", 70, 10),
        textMark({.place = {80, 0, 10, 20}, .text = "a long text"})});
    EXPECT_THAT(toldOf(events), testing::IsEmpty());
}

/// The rows of a picture of `scale` in which a level line of one point at 10.5 has any ink, with
/// how strong it is.
std::set<int> inkOfLevelLine(double scale)
{
    QImage image(QSize(40, 40) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintMark(painter, lineMark({0, 10.5}, {40, 10.5}, {kBlack}), QPalette());
    std::set<int> shades;
    for (int y = 0; y < image.height(); ++y) {
        shades.insert(qGray(image.pixel(image.width() / 2, y)));
    }
    return shades;
}

TEST(PaintMark, PutsLinesOnWholeDevicePixelsAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        EXPECT_THAT(inkOfLevelLine(scale), ElementsAre(0, 255)) << "at scale " << scale;
    }
}

TEST(PaintMark, FillsBoxesWithSharpEdgesAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        QImage image(QSize(40, 40) * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        QPainter painter(&image);
        paintMark(painter, boxMark({3.3, 4.7, 11.1, 9.9}, {kBlack}), QPalette());
        std::set<int> shades;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                shades.insert(qGray(image.pixel(x, y)));
            }
        }
        EXPECT_THAT(shades, ElementsAre(0, 255)) << "at scale " << scale;
    }
}

Mark areaUpTo(double x, Color color)
{
    return {.shape = Path{moveTo({0, 0}), lineTo({x, 0}), lineTo({x, 40}), lineTo({0, 40})},
        .fills = {{color, 0.5}},
        .ground = InterfaceColor::controlBackground};
}

TEST(PaintMark, MixesFillsAndGroundIntoOneOpaqueColour)
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    ASSERT_EQ(Look::controlBackground(palette), QColor(Qt::white));
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintMark(painter, areaUpTo(30, {255, 0, 0}), palette);
    paintMark(painter, areaUpTo(10.5, {0, 0, 255}), palette);
    painter.end();
    EXPECT_NEAR(qRed(image.pixel(20, 20)), 255, 1);
    EXPECT_NEAR(qGreen(image.pixel(20, 20)), 128, 1);
    EXPECT_NEAR(qRed(image.pixel(5, 20)), 128, 1); // nothing of the red below
    EXPECT_NEAR(qBlue(image.pixel(5, 20)), 255, 1);
    // The pixel of their edge is half the one and half the other, and none of the ground.
    EXPECT_NEAR(qRed(image.pixel(10, 20)), 191, 3);
    EXPECT_NEAR(qGreen(image.pixel(10, 20)), 128, 3);
    EXPECT_NEAR(qBlue(image.pixel(10, 20)), 191, 3);
}

/// How far two pictures differ at most, in one part of a colour.
int greatestDifference(const QImage& a, const QImage& b)
{
    int greatest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            greatest = std::max(greatest, std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))));
        }
    }
    return greatest;
}

QImage drawnOn(double scale, const std::function<void(QPainter&)>& draw)
{
    QImage image(QSize(60, 60) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return image;
}

TEST(FillRounded, LooksLikeOneShapeWithoutSeamsAtEveryScale)
{
    const QColor color(0, 0, 0, 128);
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (const double radius : {0.0, 3.0, 12.0, 28.0, 100.0}) {
            const QRectF rect(4, 8, 52, 44);
            const double most = std::min(radius, rect.height() / 2);
            const QImage banded = drawnOn(
                scale, [&](QPainter& painter) { fillRounded(painter, rect, radius, color); });
            const QImage whole = drawnOn(scale, [&](QPainter& painter) {
                painter.setPen(Qt::NoPen);
                painter.setBrush(color);
                painter.drawRoundedRect(onDevicePixels(painter, rect), most, most);
            });
            EXPECT_LE(greatestDifference(banded, whole), 12) << scale << " " << radius;
        }
    }
}

TEST(PaintMark, TakesItsColoursFromThePalette)
{
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    EXPECT_EQ(Look::color(Tint{SystemColor::blue}, dark), QColor(0x0A, 0x84, 0xFF));
    EXPECT_EQ(Look::color(Tint{Color{1, 2, 3}, 0.5}, dark).alpha(), 128);
    EXPECT_EQ(Look::color(Tint{InterfaceColor::windowBackground}, dark), QColor(Qt::black));
}

TEST_F(MarkViewTest, PaintsTheSameInPartsAsInOne)
{
    view.resize(120, 60);
    show({boxMark({0, 0, 120, 60}, {SystemColor::gray}),
        {.shape = Box{{20, 20, 20, 20}, 4},
            .stroke = Stroke{{SystemColor::red}, 6},
            .texts = {{.place = {20, 28, 20, 2}, .text = "高", .face = {.pixels = 18}}}},
        {.shape = Box{{90, 20, 4, 4}},
            .symbols = {{.place = {60, 40, 16, 16}, .symbol = "heart.fill"}}}});
    const QImage whole = view.grab().toImage();
    for (int x = 0; x < 120; x += 3) {
        for (int y = 0; y < 60; y += 3) {
            const QRect part(x, y, 3, 3);
            ASSERT_EQ(view.grab(part).toImage(), whole.copy(part)) << x << " " << y;
        }
    }
}

TEST_F(MarkViewTest, PaintsAGradientFromLeftToRight)
{
    show({{.shape = Box{{0, 0, 100, 40}},
        .gradient = {{Color{0, 0, 0}}, {Color{255, 0, 0}}, {Color{0, 0, 255}}}}});
    const QImage image = view.grab().toImage();
    EXPECT_LT(qRed(image.pixel(0, 20)), 8);
    EXPECT_NEAR(qRed(image.pixel(25, 20)), 128, 8);
    EXPECT_GT(qRed(image.pixel(50, 20)), 247);
    EXPECT_NEAR(qBlue(image.pixel(75, 20)), 128, 8);
    EXPECT_GT(qBlue(image.pixel(99, 20)), 247);
}

} // namespace
} // namespace quillbrook
