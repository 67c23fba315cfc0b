#include "pages/views/PeriodPicker.h"

#include "base/Fatal.h"
#include "platform/qt/QtText.h"
#include "report/DataProvider.h"

namespace quillbrook {

namespace {

QStringList labelsOf(DataProvider& provider, NavTab tab)
{
    QStringList labels;
    withPeriod(provider, tab, [&]<typename Period>(Property<Period>&) {
        for (const auto& each : allCases<Period>) {
            labels.append(toQString(each.rawValue));
        }
    });
    if (labels.isEmpty()) {
        fatal("PeriodPicker: a tab without periods");
    }
    return labels;
}

} // namespace

PeriodPicker::PeriodPicker(DataProvider& provider, NavTab tab, int width, QWidget* parent)
    : SegmentedPicker("时段", labelsOf(provider, tab), width, parent)
{
    // A period's place in the picker is that among its cases.
    withPeriod(provider, tab, [this]<typename Period>(Property<Period>& period) {
        const auto follow = [this](Period chosen) { setCurrent(static_cast<int>(chosen)); };
        follow(period.get());
        subscription = period.observe(follow);
        connect(this, &SegmentedPicker::picked, this, [&period](int index) {
            period.set(allCases<Period>[static_cast<std::size_t>(index)].value);
        });
    });
}

} // namespace quillbrook
