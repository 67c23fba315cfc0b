#include "pages/kit/Legend.h"

#include "pages/kit/FlowLayout.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

QLayout* layoutFor(const LegendForm& form)
{
    if (form.arrangement == LegendForm::Arrangement::column) {
        auto* column = new QVBoxLayout;
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(form.spacing);
        return column;
    }
    const bool isCentered = form.arrangement == LegendForm::Arrangement::centeredFlow;
    return new FlowLayout(
        form.spacing, isCentered ? FlowLayout::Rows::centered : FlowLayout::Rows::fromTheLeft);
}

} // namespace

Legend::Legend(LegendForm form, QWidget* parent)
    : QWidget(parent)
    , form(form)
    , place(layoutFor(form))
{
    setLayout(place);
    if (form.arrangement == LegendForm::Arrangement::column) {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    }
}

void Legend::setEntries(const QList<LegendChip>& entries)
{
    QList<Chip*> before = std::exchange(chips, {});
    for (const LegendChip& entry : entries) {
        Chip* chip = takeChip(before, entry);
        chips.append(chip);
        place->removeWidget(chip);
        place->addWidget(chip);
        chip->raise(); // the order of children is the order of reading
    }
    for (Chip* gone : before) {
        place->removeWidget(gone);
        gone->hide();
        gone->deleteLater(); // it may be the one whose press leads here
    }
    setHighlighted(highlighted);
}

Chip* Legend::takeChip(QList<Chip*>& before, const LegendChip& entry)
{
    const auto same = std::find_if(
        before.begin(), before.end(), [&](const Chip* chip) { return chip->text() == entry.name; });
    Chip* chip = nullptr;
    if (same == before.end()) {
        chip = new Chip(form.kind, entry.name, entry.tint, this);
        connect(chip, &Chip::clicked, this, [this, name = entry.name] { emit pressed(name); });
    } else {
        chip = *same;
        before.erase(same);
        chip->setDot(entry.tint);
    }
    chip->setHelp(entry.help);
    return chip;
}

void Legend::setHighlighted(const std::optional<QString>& name)
{
    highlighted = name;
    for (Chip* chip : std::as_const(chips)) {
        chip->setChecked(name && chip->text() == *name);
    }
}

} // namespace quillbrook
