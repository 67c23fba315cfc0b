#include "pages/views/PeriodPicker.h"

#include "support/PagesFixture.h"

#include <gmock/gmock.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;

using PeriodPickerTest = PagesFixture;

TEST_F(PeriodPickerTest, ShowsThePeriodsOfItsTabInTheirOrder)
{
    PeriodPicker picker(provider, NavTab::focus, 280);
    picker.show();
    EXPECT_THAT(namesOf(elementsOf(picker, QAccessible::PageTab)),
        ElementsAre("今日", "昨日", "本周", "本月", "全部"));
}

TEST_F(PeriodPickerTest, BeginsWithTheProvidersChoiceAndFollowsIt)
{
    PeriodPicker picker(provider, NavTab::idles, 280);
    EXPECT_EQ(picker.accessibleValue(), "今日");
    provider.idlesPeriod.set(IdlesPeriod::hour6);
    EXPECT_EQ(picker.accessibleValue(), "6小时");
}

TEST_F(PeriodPickerTest, SetsTheProvidersPeriodOnce)
{
    PeriodPicker picker(provider, NavTab::keylog, 240);
    int changes = 0;
    const Subscription counted = provider.keylogPeriod.observe([&](KeylogPeriod) { ++changes; });
    button(picker, "本月").click();
    button(picker, "本月").click();
    EXPECT_EQ(provider.keylogPeriod.get(), KeylogPeriod::month);
    EXPECT_EQ(changes, 1);
}

TEST_F(PeriodPickerTest, LeavesTheProviderWhenItGoes)
{
    {
        const PeriodPicker picker(provider, NavTab::alerts, 280);
    }
    provider.alertsPeriod.set(AlertsPeriod::all); // tells nobody
    EXPECT_EQ(provider.alertsPeriod.get(), AlertsPeriod::all);
}

} // namespace
} // namespace quillbrook
