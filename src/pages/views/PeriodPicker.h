#pragma once

#include "base/Property.h"
#include "pages/kit/SegmentedPicker.h"
#include "report/Periods.h"

namespace quillbrook {

class DataProvider;

/// The periods of a tab. The picker follows the provider's choice, and sets it when the user picks.
class PeriodPicker final : public SegmentedPicker {
public:
    /// Fatal for a tab without periods.
    PeriodPicker(DataProvider& provider, NavTab tab, int width, QWidget* parent = nullptr);

private:
    Subscription subscription{};
};

} // namespace quillbrook
