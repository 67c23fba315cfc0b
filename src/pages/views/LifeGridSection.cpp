#include "pages/views/LifeGridSection.h"

#include "pages/kit/Look.h"
#include "pages/kit/MenuPicker.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/WrappedLabel.h"
#include "pages/views/LifeGridView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kSpacing = 12;
constexpr int kPickerWidth = 160;

QString yearLabel(int year)
{
    return QString("%1 年").arg(year);
}

QStringList yearLabels()
{
    QStringList labels;
    for (int year = life::kFirstBirthYear; year <= life::kLastBirthYear; ++year) {
        labels.append(yearLabel(year));
    }
    return labels;
}

} // namespace

LifeGridSection::LifeGridSection(const Clock& clock, QWidget* parent)
    : QWidget(parent)
    , picker(new MenuPicker("选择出生年度", kPickerWidth))
    , grid(new LifeGridView(clock))
{
    picker->setChoices(yearLabels());
    connect(picker, &MenuPicker::picked, this,
        [this](int index) { emit birthYearPicked(life::kFirstBirthYear + index); });
    auto* head = new QHBoxLayout;
    head->setSpacing(kSpacing);
    head->addWidget(textLabel("生命进度", Look::font(TextStyle::headline)));
    head->addStretch();
    head->addWidget(secondaryLabel("选择出生年度", Look::font(TextStyle::subheadline)));
    head->addWidget(picker);
    auto* note = new WrappedLabel(
        "生命进度相对于上海人均寿命计算；根据2025年国家卫健委及地方卫健委最新统计，"
        "上海市人均84.11岁，以此为基准乐观计算。",
        Look::font(TextStyle::caption2));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addLayout(head);
    column->addWidget(grid);
    column->addWidget(note);
}

void LifeGridSection::setLife(int birthYear, int age)
{
    const bool isChoice = birthYear >= life::kFirstBirthYear && birthYear <= life::kLastBirthYear;
    if (isChoice) {
        picker->setCurrent(birthYear - life::kFirstBirthYear);
    } else {
        picker->showOther(yearLabel(birthYear));
    }
    const int birthCol = birthColumn(birthYear);
    grid->setCells(
        computeCellInfos(age, birthCol, lifeExpectancyAge()), birthCol, lifeExpectancyAge());
}

void LifeGridSection::setShowBellEffect(bool isOn)
{
    grid->setShowBellEffect(isOn);
}

} // namespace quillbrook
