#include "base/Property.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

TEST(Property, TellsOfEveryAssignmentEqualOnesIncluded)
{
    Property<int> property(1);
    std::vector<int> told;
    const Subscription subscription = property.observe([&](int value) { told.push_back(value); });
    property.set(2);
    property.set(2);
    EXPECT_THAT(told, ElementsAre(2, 2));
    EXPECT_EQ(property.get(), 2);
}

TEST(Property, TellsNobodyWhoDroppedTheSubscription)
{
    Property<int> property;
    int told = 0;
    Subscription subscription = property.observe([&](int) { ++told; });
    property.set(1);
    subscription.reset();
    property.set(2);
    EXPECT_EQ(told, 1);
}

TEST(Property, ObserversMayObserveAndDropMeanwhile)
{
    Property<int> property;
    std::vector<Subscription> subscriptions;
    int told = 0;
    subscriptions.push_back(property.observe(
        [&](int) { subscriptions.push_back(property.observe([&](int) { ++told; })); }));
    property.set(1);
    EXPECT_EQ(told, 0);
    property.set(2);
    EXPECT_EQ(told, 1);
}

TEST(Property, AnObserverMayDropThePropertyItself)
{
    auto property = std::make_unique<Property<std::string>>();
    std::string told;
    int toldLater = 0;
    const Subscription first = property->observe([&](const std::string& value) {
        property.reset();
        told = value;
    });
    const Subscription second = property->observe([&](const std::string&) { ++toldLater; });
    property->set("a text that is too long to lie within the string itself");
    EXPECT_EQ(told, "a text that is too long to lie within the string itself");
    EXPECT_EQ(toldLater, 0);
}

} // namespace
} // namespace quillbrook
