#include "platform/linux/words/HeldErrors.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace quillbrook {
namespace {

void writeOnErrors(const std::string& text)
{
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
}

TEST(HeldErrors, WhatWasHeldIsLetOutAtTheEnd)
{
    EXPECT_EXIT(
        {
            {
                const HeldErrors held;
                writeOnErrors("one\n");
            }
            writeOnErrors("two\n");
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "^one\ntwo\n$");
}

TEST(HeldErrors, WhatWasTakenIsNot)
{
    EXPECT_EXIT(
        {
            HeldErrors held;
            writeOnErrors("one\n");
            const bool isTaken = held.take() == "one\n" && held.take().empty();
            writeOnErrors("two\n");
            std::_Exit(isTaken ? 0 : 1);
        },
        testing::ExitedWithCode(0), "^two\n$");
}

TEST(HeldErrors, NobodyWaitsWhereMoreIsWrittenThanIsHeld)
{
    HeldErrors held;
    for (int i = 0; i < 100; ++i) {
        writeOnErrors(std::string(4096, 'x'));
    }
    EXPECT_GE(held.take().size(), 4096U);
}

} // namespace
} // namespace quillbrook
