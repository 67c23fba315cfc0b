#include "platform/linux/keys/PlausibleKeys.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(PlausibleKeys, AreAsManyAsToolsTypeInASecond)
{
    PlausibleKeys keys;
    EXPECT_TRUE(keys.areBelieved(1, 100));
    EXPECT_TRUE(keys.areBelieved(10'000, 101));
    EXPECT_FALSE(keys.areBelieved(10'001, 102));
    EXPECT_FALSE(keys.areBelieved(0, 103));
    EXPECT_FALSE(keys.areBelieved(0xffffffff, 104)) << "a negative number, read without its sign";
}

TEST(PlausibleKeys, ComeOnceASecondWithSomeThatAreLate)
{
    PlausibleKeys keys;
    for (int second = 0; second < 300; ++second) {
        ASSERT_TRUE(keys.areBelieved(1, second));
    }
    for (int late = 0; late < 30; ++late) {
        ASSERT_TRUE(keys.areBelieved(1, 300)) << late;
    }
}

TEST(PlausibleKeys, OfAFloodAreThoseOfAMinute)
{
    PlausibleKeys keys;
    int believed = 0;
    for (int telling = 0; telling < 1000; ++telling) {
        believed += keys.areBelieved(1, 1000 + telling * 0.01) ? 1 : 0;
    }
    EXPECT_EQ(believed, 90);
    EXPECT_FALSE(keys.areBelieved(1, 1059.9));
    EXPECT_TRUE(keys.areBelieved(1, 1060));
}

} // namespace
} // namespace quillbrook
