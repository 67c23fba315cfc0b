#include "pages/kit/BorderedButton.h"
#include "pages/kit/CardRow.h"
#include "pages/kit/EmptyState.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/InfoPopover.h"
#include "pages/kit/Legend.h"
#include "pages/kit/Look.h"
#include "pages/kit/MenuPicker.h"
#include "pages/kit/NoteBox.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/PageTitle.h"
#include "pages/kit/Section.h"
#include "pages/kit/SegmentedPicker.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/TintedLabel.h"
#include "support/AccessibleEvents.h"
#include "support/Elements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

#include <array>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> texts(QWidget& widget)
{
    return namesOf(elementsOf(widget, QAccessible::StaticText));
}

TEST(PageHead, HasItsTitleAtTheLeftAndAllElseAtTheRight)
{
    PageHead head(new PageTitle("Title", PageTitle::Design::serif), 12);
    auto* picker = new SegmentedPicker("period", {"a", "b"}, 140);
    auto* button = new IconButton("tag", 14, "categories");
    head.add(picker);
    head.add(button);
    head.resize(700, 50);
    head.show();
    EXPECT_THAT(texts(head), ElementsAre("Title"));
    EXPECT_EQ(head.findChild<PageTitle*>()->x(), 0);
    EXPECT_EQ(button->geometry().right(), 699);
    EXPECT_EQ(button->x() - picker->geometry().right() - 1, 12);
}

TEST(PageHead, MayHaveAPlainTitleWithACaption)
{
    PageHead head(plainTitle("Title", TextStyle::title, "caption"));
    head.show();
    EXPECT_THAT(texts(head), ElementsAre("Title", "caption"));
    EXPECT_EQ(head.findChild<QLabel*>()->font().weight(), QFont::Bold);
}

TEST(Section, ShowsItsEmptyTextInTheContentsPlace)
{
    Section section("headline", {.emptyText = "nothing", .emptyHeight = 200});
    section.content().addWidget(textLabel("content", Look::font(TextStyle::body)));
    section.addNote("note");
    section.show();
    EXPECT_THAT(texts(section), ElementsAre("headline", "note", "nothing"));
    EXPECT_GE(section.sizeHint().height(), 2 * 20 + 200);
    section.setEmpty(false);
    EXPECT_THAT(texts(section), ElementsAre("headline", "note", "content"));
    section.setEmpty(true);
    EXPECT_THAT(texts(section), ElementsAre("headline", "note", "nothing"));
}

TEST(Section, StandsOnThePageItselfWithoutAPanel)
{
    Section section({}, {.panel = withoutPanel()});
    section.content().addWidget(textLabel("content", Look::font(TextStyle::body)));
    section.setEmpty(false);
    section.resize(300, 100);
    section.show();
    EXPECT_EQ(section.contentsMargins(), QMargins());
    EXPECT_THAT(texts(section), ElementsAre("content"));
}

TEST(Legend, HasAChipForEachName)
{
    Legend legend({.kind = Chip::Kind::label});
    legend.setEntries({{"Mail", Tint{SystemColor::blue}, "Mail — 2h"}, {"Notes", {}, {}}});
    legend.show();
    EXPECT_THAT(texts(legend), ElementsAre("Mail", "Notes"));
    EXPECT_EQ(legend.findChildren<Chip*>().first()->toolTip(), "Mail — 2h");
    legend.setEntries({{"Notes", {}, {}}, {"Mail", {}, {}}});
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_THAT(texts(legend), ElementsAre("Notes", "Mail"));
    EXPECT_EQ(legend.findChildren<Chip*>().last()->toolTip(), "");
}

TEST(Legend, TellsWhichChipWasPressedAndMarksOne)
{
    Legend legend({.kind = Chip::Kind::button});
    legend.setEntries({{"Mail", {}, {}}, {"Notes", {}, {}}});
    legend.show();
    QString pressed;
    QObject::connect(&legend, &Legend::pressed, [&](const QString& name) {
        pressed = name;
        legend.setEntries({{"Notes", {}, {}}}); // the chip whose press leads here goes
    });
    const QList<Chip*> chips = legend.findChildren<Chip*>();
    chips[0]->click();
    EXPECT_EQ(pressed, "Mail");
    legend.setHighlighted("Notes");
    EXPECT_TRUE(chips[1]->isChecked());
    legend.setEntries({{"Mail", {}, {}}, {"Notes", {}, {}}}); // the mark stays with the name
    EXPECT_TRUE(chips[1]->isChecked());
    legend.setHighlighted(std::nullopt);
    EXPECT_FALSE(chips[1]->isChecked());
}

TEST(Legend, StandsAsAColumnOrInTheMiddle)
{
    Legend column(
        {.kind = Chip::Kind::plain, .arrangement = LegendForm::Arrangement::column, .spacing = 4});
    Legend middle({.kind = Chip::Kind::plain,
        .arrangement = LegendForm::Arrangement::centeredFlow,
        .spacing = 12});
    for (Legend* legend : {&column, &middle}) {
        legend->setEntries({{"a", {}, {}}, {"b", {}, {}}});
        legend->resize(300, legend->sizeHint().height());
        legend->show();
    }
    const QList<Chip*> under = column.findChildren<Chip*>();
    EXPECT_EQ(under[1]->y() - under[0]->geometry().bottom() - 1, 4);
    const QList<Chip*> beside = middle.findChildren<Chip*>();
    EXPECT_NEAR(beside[0]->x(), 299 - beside[1]->geometry().right(), 1);
    EXPECT_GT(beside[0]->x(), 100);
}

TEST(InfoPopover, TellsItsEntriesInOrder)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    InfoPopover popover({.width = 350, .spacing = 12}, &anchor);
    popover.addHeadline("headline", 2);
    popover.addEntry({"clock.fill", SystemColor::blue, "name", "value", "detail"});
    popover.addDivider();
    popover.addNote("note");
    popover.open();
    EXPECT_THAT(texts(popover), ElementsAre("headline", "name", "value", "detail", "note"));
    EXPECT_EQ(popover.body().width(), 350);
    EXPECT_EQ(popover.findChild<SymbolLabel*>()->size(), QSize(10, 10));
}

TEST(InfoPopover, PutsADetailUnderItsNameOrItsSymbol)
{
    IconButton anchor("info.circle", 14, "about");
    anchor.show();
    const auto detailPlace = [&](bool isUnderName) {
        InfoPopover popover({.isDetailUnderName = isUnderName}, &anchor);
        popover.addEntry({"cpu", SystemColor::orange, "name", {}, "detail"});
        popover.open();
        const QList<QLabel*> labels = popover.findChildren<QLabel*>();
        return labels[1]->x() - labels[0]->x();
    };
    EXPECT_EQ(detailPlace(true), 0);
    EXPECT_EQ(detailPlace(false), -16);
}

TEST(CardRow, ShowsItsFiguresInCardsOfOneWidth)
{
    CardRow row(2, {.spacing = 16, .valuePixels = 18});
    row.setFigures(std::array{FigureContent{"clock.fill", SystemColor::blue, "3h5m", "time"},
        FigureContent{"app.badge.fill", SystemColor::orange, "7", "apps"}});
    row.resize(416, 108);
    row.show();
    EXPECT_THAT(elementsOf(row, QAccessible::StaticText),
        ElementsAre(Element{QAccessible::StaticText, "time", "3h5m"},
            Element{QAccessible::StaticText, "apps", "7"}));
    const QList<FigureCard*> cards = row.findChildren<FigureCard*>();
    EXPECT_EQ(cards[0]->width(), 200);
    EXPECT_EQ(cards[1]->x(), 216);
    EXPECT_LT(cards[0]->sizeHint().height(), FigureCard({}).sizeHint().height());
}

TEST(FigureCard, LetsScreenReadersHearAChangedValue)
{
    FigureCard card({});
    card.setFigure("clock.fill", SystemColor::blue, "3h5m", "time");
    const AccessibleEvents events;
    card.setFigure("clock.fill", SystemColor::blue, "3h5m", "time");
    EXPECT_THAT(events.of(card), IsEmpty());
    card.setFigure("clock.fill", SystemColor::blue, "3h6m", "time");
    EXPECT_THAT(events.of(card), ElementsAre(QAccessible::DescriptionChanged));
    EXPECT_EQ(card.accessibleDescription(), "3h6m");
}

TEST(NoteBox, IsReadFromTheHeadlineDown)
{
    NoteBox box(SystemColor::green, "headline", {"first", "second"});
    box.show();
    EXPECT_THAT(texts(box), ElementsAre("headline", "first", "second"));
    EXPECT_EQ(box.contentsMargins(), QMargins(12, 12, 12, 12));
}

TEST(TintedLabel, FollowsThePalette)
{
    TintedLabel label("text", Look::font(TextStyle::body), Tint{SystemColor::orange, 0.5});
    label.show();
    const QColor light = label.palette().color(QPalette::WindowText);
    EXPECT_EQ(light.rgb(), QColor(0xFF, 0x95, 0x00).rgb());
    EXPECT_NEAR(light.alphaF(), 0.5, 0.01);
    Look::apply(true, std::nullopt);
    EXPECT_EQ(label.palette().color(QPalette::WindowText).rgb(), QColor(0xFF, 0x9F, 0x0A).rgb());
    Look::apply(false, std::nullopt);
}

TEST(BorderedButton, IsNamedByItsTextOrByItsName)
{
    BorderedButton both("arrow.clockwise", "刷新", {});
    EXPECT_EQ(both.accessibleName(), "刷新");
    EXPECT_EQ(both.toolTip(), "");
    const BorderedButton symbol("arrow.clockwise", {}, "刷新");
    EXPECT_EQ(symbol.accessibleName(), "刷新");
    EXPECT_EQ(symbol.toolTip(), "刷新");
    EXPECT_LT(symbol.sizeHint().width(), both.sizeHint().width());
    bool isPressed = false;
    QObject::connect(&both, &BorderedButton::clicked, [&] { isPressed = true; });
    press(both, Qt::Key_Space);
    EXPECT_TRUE(isPressed);
}

TEST(MenuPicker, ChoosesFromItsMenuAndByTheArrowKeys)
{
    MenuPicker picker("app", 130);
    picker.setChoices({"all", "R&D", "Mail"});
    std::vector<int> picked;
    QObject::connect(&picker, &MenuPicker::picked, [&](int index) { picked.push_back(index); });
    EXPECT_EQ(picker.current(), 0);
    EXPECT_EQ(picker.accessibleValue(), "all");
    const std::unique_ptr<QMenu> menu(picker.makeMenu());
    EXPECT_EQ(menu->actions()[1]->text(), "R&&D"); // no mnemonic
    EXPECT_TRUE(menu->actions()[0]->isChecked());
    menu->actions()[1]->trigger();
    press(picker, Qt::Key_Down);
    press(picker, Qt::Key_Down); // there is nothing behind the last
    press(picker, Qt::Key_Up);
    EXPECT_THAT(picked, ElementsAre(1, 2, 1));
    EXPECT_EQ(picker.accessibleValue(), "R&D");
}

TEST(MenuPicker, KeepsItsChoiceByItsText)
{
    MenuPicker picker("app", 130);
    picker.setChoices({"all", "Mail"});
    picker.setCurrent(1);
    picker.setChoices({"all", "Files", "Mail"});
    EXPECT_EQ(picker.current(), 2);
    picker.setChoices({"all", "Files"});
    EXPECT_EQ(picker.current(), 0);
    picker.setChoices({});
    EXPECT_EQ(picker.current(), -1);
}

TEST(MenuPicker, OffersEveryChoiceWhileItShowsAnother)
{
    MenuPicker picker("app", 130);
    picker.setChoices({"all", "Mail"});
    picker.showOther("Gone");
    EXPECT_EQ(picker.current(), -1);
    EXPECT_EQ(picker.accessibleValue(), "Gone");
    int picked = -1;
    QObject::connect(&picker, &MenuPicker::picked, [&](int index) { picked = index; });
    const std::unique_ptr<QMenu> menu(picker.makeMenu());
    menu->actions()[0]->trigger();
    EXPECT_EQ(picked, 0);
    EXPECT_EQ(picker.accessibleValue(), "all");
}

TEST(MenuPicker, LetsScreenReadersHearItsChoice)
{
    MenuPicker picker("app", 130);
    picker.setChoices({"all", "Mail"});
    const AccessibleEvents events;
    picker.setCurrent(1);
    EXPECT_THAT(events.of(picker), testing::Contains(QAccessible::DescriptionChanged));
    EXPECT_EQ(picker.accessibleDescription(), "Mail");
}

TEST(EmptyState, HasTheSizeItIsGiven)
{
    EmptyState state(
        "moon.zzz", "line", {}, EmptyForm{.symbolPixels = 48, .lineStyle = TextStyle::headline});
    EXPECT_EQ(state.findChild<SymbolLabel*>()->width(), 48);
    EXPECT_EQ(state.findChild<QLabel*>()->font().pixelSize(), 13);
}

} // namespace
} // namespace quillbrook
