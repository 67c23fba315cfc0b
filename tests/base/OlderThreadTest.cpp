#include "base/OlderThread.h"
#include "support/InChild.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace quillbrook {
namespace {

std::thread::id threadOfBody()
{
    std::thread::id thread;
    onOlderThread([&] { thread = std::this_thread::get_id(); });
    return thread;
}

TEST(OlderThread, IsTheCallersOwnWhereNoneWasStarted)
{
    EXPECT_FALSE(isOlderThreadThere());
    EXPECT_EQ(threadOfBody(), std::this_thread::get_id());
}

TEST(OlderThread, IsOneForAllThatComesAfter)
{
    EXPECT_EQ(inChild([] {
        const bool isStarted = startOlderThread() && isOlderThreadThere();
        const std::thread::id first = threadOfBody();
        return isStarted && first != std::this_thread::get_id() && first == threadOfBody() ? 0 : 1;
    }),
        0);
}

TEST(OlderThread, RunsWhatIsAskedFromWithin)
{
    EXPECT_EQ(inChild([] {
        startOlderThread();
        int answer = 1;
        onOlderThread([&] { onOlderThread([&] { answer = 0; }); });
        return answer;
    }),
        0);
}

TEST(OlderThread, ServesSeveralThreadsOneAfterTheOther)
{
    constexpr int kRounds = 2000;
    EXPECT_EQ(inChild([] {
        startOlderThread();
        int count = 0; // by the older thread alone
        const auto ask = [&] {
            for (int i = 0; i < kRounds; ++i) {
                onOlderThread([&] { ++count; });
            }
        };
        {
            const std::array<std::jthread, 4> threads{
                std::jthread(ask), std::jthread(ask), std::jthread(ask), std::jthread(ask)};
        }
        return count == 4 * kRounds ? 0 : 1;
    }),
        0);
}

} // namespace
} // namespace quillbrook
