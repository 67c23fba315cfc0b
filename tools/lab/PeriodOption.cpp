#include "lab/PeriodOption.h"

#include "report/DataProvider.h"

namespace quillbrook::lab {

std::optional<std::string> periodOption(const Arguments& arguments, NavTab tab)
{
    auto label = arguments.option("--period");
    if (!label) {
        return std::nullopt;
    }
    bool isFound = false;
    RefreshContext sample;
    withPeriod(sample, tab,
        [&]<typename Period>(Period&) { isFound = fromRawValue<Period>(*label).has_value(); });
    if (!isFound) {
        arguments.reject("--period", "the page has no period '" + *label + "'");
    }
    return label;
}

void choosePeriod(DataProvider& provider, NavTab tab, const std::string& label)
{
    withPeriod(provider, tab, [&]<typename Period>(Property<Period>& period) {
        period.set(*fromRawValue<Period>(label));
    });
}

} // namespace quillbrook::lab
