#include "base/Lifetime.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace quillbrook {
namespace {

TEST(Lifetime, RunsWhatItWrapsUntilItEnds)
{
    int runs = 0;
    std::optional<Lifetime> lifetime;
    lifetime.emplace();
    const std::function<void()> block = lifetime->whileAlive([&runs] { ++runs; });
    block();
    block();
    EXPECT_EQ(runs, 2);
    lifetime.reset();
    block();
    EXPECT_EQ(runs, 2);
}

TEST(Lifetime, BeginsAnewAsAnother)
{
    std::optional<Lifetime> lifetime;
    lifetime.emplace();
    const Lifetime::Watch first = lifetime->watch();
    EXPECT_FALSE(first.isOver());
    lifetime.emplace();
    EXPECT_TRUE(first.isOver());
    EXPECT_FALSE(lifetime->watch().isOver());
}

TEST(Lifetime, MayEndInsideOfWhatItWraps)
{
    std::optional<Lifetime> lifetime;
    lifetime.emplace();
    const std::function<void()> block = lifetime->whileAlive([&lifetime] { lifetime.reset(); });
    block();
    block();
    EXPECT_FALSE(lifetime.has_value());
}

} // namespace
} // namespace quillbrook
