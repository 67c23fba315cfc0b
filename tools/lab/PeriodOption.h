#pragma once

#include "lab/Arguments.h"
#include "report/Periods.h"

#include <optional>
#include <string>

namespace quillbrook {
class DataProvider;
}

namespace quillbrook::lab {

/// The label that `--period` names, which is one of the tab's; empty without the option. Ends the
/// program for any other label.
std::optional<std::string> periodOption(const Arguments& arguments, NavTab tab);

/// Sets the provider's period of a tab to the one of that label.
void choosePeriod(DataProvider& provider, NavTab tab, const std::string& label);

} // namespace quillbrook::lab
