#include "pages/views/AlertDayList.h"

#include "pages/figures/AlertTimelineMarks.h"
#include "pages/kit/FoldHeader.h"
#include "pages/kit/MarkView.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kMinimumWidth = 320;

} // namespace

AlertDayList::AlertDayList(QWidget* parent) : QWidget(parent), column(new QVBoxLayout(this))
{
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
}

void AlertDayList::setDays(std::vector<AlertDay> newDays, const std::string& today)
{
    std::swap(days, newDays);
    const std::vector<AlertDay>& oldDays = newDays;
    const bool areSame = std::ranges::equal(days, oldDays, {}, &AlertDay::date, &AlertDay::date);
    if (!areSame) {
        collapsedDates.clear();
        for (const AlertDay& day : days) {
            if (day.date != today) {
                collapsedDates.insert(day.date);
            }
        }
        rebuildSections();
    }
    for (std::size_t place = 0; place < days.size(); ++place) {
        if (!areSame || days[place] != oldDays[place]) {
            showDay(place);
        }
    }
}

void AlertDayList::rebuildSections()
{
    QString focused;
    for (const Section& section : sections) {
        if (section.header->hasFocus()) {
            focused = section.header->text();
        }
    }
    // In a visible list each section that comes would place all others again.
    const bool wasHidden = isHidden();
    hide();
    for (const Section& section : std::exchange(sections, {})) {
        delete section.header;
        delete section.picture;
    }
    for (const AlertDay& day : days) {
        addSection(day);
    }
    setHidden(wasHidden);
    const auto same = std::ranges::find(
        sections, focused, [](const Section& section) { return section.header->text(); });
    if (same != sections.end()) {
        same->header->setFocus();
    }
}

void AlertDayList::addSection(const AlertDay& day)
{
    Section section;
    const std::size_t place = sections.size();
    section.header = new FoldHeader(toQString(day.date));
    section.header->setDivided(place > 0);
    connect(section.header, &FoldHeader::clicked, this, [this, place] { toggle(place); });
    column->addWidget(section.header);
    sections.push_back(section);
}

void AlertDayList::toggle(std::size_t place)
{
    const std::string& date = days[place].date;
    if (collapsedDates.erase(date) == 0) {
        collapsedDates.insert(date);
    }
    showDay(place);
}

void AlertDayList::showDay(std::size_t place)
{
    const AlertDay& day = days[place];
    Section& section = sections[place];
    const bool isOpen = !collapsedDates.contains(day.date);
    section.header->setNote(toQString(dayTotal(day)));
    section.header->setChecked(isOpen);
    if (!isOpen) {
        delete std::exchange(section.picture, nullptr);
        return;
    }
    const bool isNew = section.picture == nullptr;
    if (isNew) {
        section.picture = new MarkView(toQString(day.date));
        column->insertWidget(column->indexOf(section.header) + 1, section.picture);
        if (place + 1 < sections.size()) {
            section.picture->stackUnder(sections[place + 1].header); // read in this order
        }
    }
    section.picture->setPictureHeight(
        static_cast<int>(alertTimelineHeight(day.alertGroups.size())), kMinimumWidth);
    section.picture->setPicture([rows = day.alertGroups](Size size, const TextWidth& textWidth) {
        return alertTimelineMarks(rows, size.width, textWidth);
    });
    if (isNew) {
        setTabOrder(section.header, section.picture); // which has stops only now
    }
}

} // namespace quillbrook
