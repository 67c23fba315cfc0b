#include "pages/kit/MenuPicker.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"

#include <QActionGroup>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>

namespace quillbrook {

namespace {

constexpr int kHeight = 24;
constexpr int kSidePadding = 8;
constexpr int kChevronPixels = 10;
constexpr int kLongestChoice = 320;
constexpr double kRadius = 5;

QFont textFont()
{
    return Look::font(TextStyle::callout);
}

} // namespace

MenuPicker::MenuPicker(const QString& name, int width, QWidget* parent) : QAbstractButton(parent)
{
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFixedSize(width, kHeight);
    connect(this, &MenuPicker::clicked, this, &MenuPicker::openMenu);
}

void MenuPicker::setChoices(const QStringList& newChoices)
{
    const int same = chosen < 0 ? -1 : static_cast<int>(newChoices.indexOf(text()));
    choices = newChoices;
    setCurrent(choices.isEmpty() ? -1 : std::max(0, same));
}

void MenuPicker::setCurrent(int index)
{
    chosen = index;
    showChoice(choices.value(index));
}

void MenuPicker::showOther(const QString& choice)
{
    chosen = -1;
    showChoice(choice);
}

void MenuPicker::showChoice(const QString& choice)
{
    setText(choice);
    setShortcut({}); // an ampersand in a name is no mnemonic
    // The choice once more as description: Linux hands on no text as an element's value, nor its
    // change.
    setAccessibleDescription(choice);
    const double room = width() - 2.0 * kSidePadding - kChevronPixels;
    const bool isCut = QFontMetricsF(textFont()).horizontalAdvance(choice) > room;
    setToolTip(isCut ? plainToolTip(choice) : QString());
    update();
}

QMenu* MenuPicker::makeMenu()
{
    auto* menu = new QMenu(this);
    menu->setFont(textFont());
    auto* group = new QActionGroup(menu);
    const QFontMetrics metrics(textFont());
    for (int i = 0; i < choices.size(); ++i) {
        QString line = metrics.elidedText(choices[i], Qt::ElideMiddle, kLongestChoice);
        QAction* action = menu->addAction(line.replace('&', "&&"));
        action->setCheckable(true);
        action->setChecked(i == chosen);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, i] { pick(i); });
    }
    return menu;
}

void MenuPicker::openMenu()
{
    QMenu* menu = makeMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setMinimumWidth(width());
    if (chosen >= 0) {
        menu->setActiveAction(menu->actions().at(chosen));
    }
    menu->popup(mapToGlobal(QPoint(0, height() + 2)));
}

void MenuPicker::pick(int index)
{
    const bool isNew = index != chosen;
    setCurrent(index);
    if (isNew) {
        emit picked(index);
    }
}

QSize MenuPicker::sizeHint() const
{
    return size();
}

void MenuPicker::keyPressEvent(QKeyEvent* event)
{
    const int step = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    const bool isOpening = (step != 0 && event->modifiers() == Qt::AltModifier)
        || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isOpening) {
        openMenu();
    } else if (step == 0) {
        QAbstractButton::keyPressEvent(event);
    } else if (const int next = chosen + step; next >= 0 && next < choices.size()) {
        pick(next);
    }
}

void MenuPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = Look::primaryText(palette());
    painter.setPen(QPen(Look::faded(ink, 0.22), 1));
    painter.setBrush(Look::controlBackground(palette()));
    const QRectF body = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(body, kRadius, kRadius);
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Look::faded(ink, isDown() ? 0.16 : 0.07));
        painter.drawRoundedRect(body, kRadius, kRadius);
    }
    const double right = width() - kSidePadding;
    const QRectF chevron(
        right - kChevronPixels, (height() - kChevronPixels) / 2.0, kChevronPixels, kChevronPixels);
    Symbol::draw(painter, "chevron.down", chevron, Look::secondaryText(palette()));
    drawShrunkText(painter, QRectF(kSidePadding, 0, chevron.left() - kSidePadding - 2, height()),
        Qt::AlignLeft, text(), textFont(), ink);
    drawFocusRing(painter, *this, rect(), kRadius);
}

} // namespace quillbrook
