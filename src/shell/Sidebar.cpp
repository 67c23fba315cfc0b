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
#include <QVBoxLayout>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kListPadding = 10;
constexpr int kHeaderIndent = 8;
constexpr int kAboveHeader = 8;

QLabel* sectionHeader(const QString& text)
{
    QLabel* header = secondaryLabel(text, Look::font(TextStyle::subheadline, QFont::DemiBold));
    header->setContentsMargins(kHeaderIndent, kAboveHeader, 0, 2);
    return header;
}

} // namespace

Sidebar::Sidebar(QWidget* parent) : QWidget(parent)
{
    setMinimumWidth(kMinimumWidth);
    auto* list = new QVBoxLayout;
    list->setContentsMargins(kListPadding, kListPadding, kListPadding, 0);
    list->setSpacing(1);
    std::string_view section;
    for (const PageEntry& page : pageTable()) {
        if (page.section.empty()) {
            continue;
        }
        if (std::exchange(section, page.section) != page.section) {
            list->addWidget(sectionHeader(toQString(page.section)));
        }
        addRow(
            *list, page.tab, new SidebarRow(toQString(page.symbol), toQString(rawValue(page.tab))));
    }

    auto* verse = new QHBoxLayout;
    verse->setContentsMargins(12, 8, 12, 8);
    verse->addStretch();
    verse->addWidget(new VerticalChineseText({"观自在菩萨", "行深般若波罗蜜多时", "墨川五蕴皆空"}));
    verse->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(list);
    column->addStretch();
    column->addLayout(verse);
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
    for (const Row& row : rows) {
        row.button->setChecked(row.tab == tab);
    }
}

void Sidebar::keyPressEvent(QKeyEvent* event)
{
    const int step = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    const auto focused = std::find_if(
        rows.begin(), rows.end(), [](const Row& row) { return row.button->hasFocus(); });
    const auto next = std::distance(rows.begin(), focused) + step;
    if (step == 0 || focused == rows.end() || next < 0 || next >= rows.size()) {
        QWidget::keyPressEvent(event);
        return;
    }
    rows[next].button->setFocus(Qt::TabFocusReason);
    emit selected(rows[next].tab);
}

void Sidebar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Look::faded(Look::controlBackground(palette()), 0.5));
    painter.fillRect(QRect(width() - 1, 0, 1, height()), Look::separator(palette()));
}

} // namespace quillbrook
