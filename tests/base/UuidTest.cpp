#include "base/Uuid.h"

#include <gtest/gtest.h>

#include <set>

namespace quillbrook {
namespace {

TEST(Uuid, IsFreshEachTime)
{
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(Uuid::random());
    }
    EXPECT_EQ(seen.size(), 1000U);
}

TEST(Uuid, SaysThatItIsRandom)
{
    const Uuid uuid = Uuid::random();
    EXPECT_EQ(uuid.bytes[6] >> 4, 4);
    EXPECT_EQ(uuid.bytes[8] >> 6, 2);
}

} // namespace
} // namespace quillbrook
