#include "shell/Sidebar.h"

#include "pages/kit/Line.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/PageTable.h"
#include "pages/views/VerticalChineseText.h"
#include "platform/qt/QtText.h"
#include "shell/AboutRow.h"
#include "shell/SidebarRow.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kListPadding = 10;
constexpr int kHeaderIndent = 8;
constexpr int kAboveHeader = 8;
constexpr int kVersePadding = 8;

QLabel* sectionHeader(const QString& text)
{
    QLabel* header = secondaryLabel(text, Look::font(TextStyle::subheadline, QFont::DemiBold));
    header->setContentsMargins(kHeaderIndent, kAboveHeader, 0, 2);
    return header;
}

/// Scrolls the rows where there is no room for them; the arrow keys are for the sidebar.
class RowScroller final : public QScrollArea {
protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

} // namespace

Sidebar::Sidebar(QWidget* parent)
    : QWidget(parent)
    , scroller(new RowScroller)
    , list(new QWidget)
    , verse(new VerticalChineseText({"观自在菩萨", "行深般若波罗蜜多时", "墨川五蕴皆空"}))
{
    setAccessibleName("页面");
    setMinimumWidth(kMinimumWidth);
    auto* entries = new QVBoxLayout(list);
    entries->setContentsMargins(kListPadding, kListPadding, kListPadding, 0);
    entries->setSpacing(1);
    std::string_view section;
    for (const PageEntry& page : pageTable()) {
        if (page.section.empty()) {
            continue;
        }
        if (std::exchange(section, page.section) != page.section) {
            entries->addWidget(sectionHeader(toQString(page.section)));
        }
        addRow(*entries, page.tab,
            new SidebarRow(toQString(page.symbol), toQString(rawValue(page.tab))));
    }
    entries->addStretch();
    scroller->setWidget(list);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->viewport()->setAutoFillBackground(false);
    list->setAutoFillBackground(false);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(scroller, 1);
    column->addWidget(verse, 0, Qt::AlignHCenter);
    column->addSpacing(kVersePadding);
    column->addWidget(new Line);
    addRow(*column, NavTab::about, new AboutRow);
}

void Sidebar::addRow(QVBoxLayout& column, NavTab tab, QAbstractButton* button)
{
    connect(button, &QAbstractButton::clicked, this, [this, tab, button] {
        button->setFocus(Qt::MouseFocusReason); // the arrow keys go on from here
        setSelected(tab); // a press on the selected row leaves it marked
        emit selected(tab);
    });
    column.addWidget(button);
    rows.append({tab, button});
}

void Sidebar::setSelected(NavTab tab)
{
    const bool hasRow
        = std::any_of(rows.begin(), rows.end(), [tab](const Row& row) { return row.tab == tab; });
    const NavTab stop = hasRow ? tab : rows.first().tab; // of the Tab key
    const bool isNew = std::exchange(selectedTab, tab) != tab;
    for (const Row& row : rows) {
        const bool isSelected = row.tab == tab;
        row.button->setFocusPolicy(row.tab == stop ? Qt::TabFocus : Qt::NoFocus);
        row.button->setChecked(isSelected); // which a click may have done, or undone
        if (isSelected && isNew) {
            QAccessibleEvent selection(row.button, QAccessible::Selection);
            QAccessible::updateAccessibility(&selection);
        }
    }
}

void Sidebar::keyPressEvent(QKeyEvent* event)
{
    const int step = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    const auto focused = std::find_if(
        rows.begin(), rows.end(), [](const Row& row) { return row.button->hasFocus(); });
    if (step == 0 || focused == rows.end()) {
        QWidget::keyPressEvent(event);
        return;
    }
    const auto next = std::distance(rows.begin(), focused) + step;
    if (next >= 0 && next < rows.size()) {
        focusRow(*rows[next].button);
        emit selected(rows[next].tab);
    }
}

void Sidebar::focusRow(QAbstractButton& button)
{
    button.setFocus(Qt::TabFocusReason);
    if (list->isAncestorOf(&button)) {
        scroller->ensureWidgetVisible(&button, 0, kListPadding);
    }
}

void Sidebar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int about = rows.last().button->sizeHint().height();
    const int needed = list->sizeHint().height() + verse->height() + 2 * kVersePadding + about;
    verse->setVisible(height() >= needed);
}

void Sidebar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Look::faded(Look::controlBackground(palette()), 0.5));
    painter.fillRect(QRect(width() - 1, 0, 1, height()), Look::separator(palette()));
}

} // namespace quillbrook
