#include "engine/Notifier.h"
#include "engine/MonitorLog.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(Notifier, DoubleQuotesBecomeSingleOnes)
{
    const TemporaryDirectory directory;
    VirtualMachine machine(directory.path(), 1767225600);
    MonitorLog log(machine.clock);
    Notifier(machine.platform(), log).sendNotification(R"(A "title")", R"(It's "<b>bold</b>" 🎉)");
    ASSERT_EQ(machine.calls.all().size(), 1U);
    EXPECT_EQ(std::get<LaunchCall>(machine.calls.all().front().what),
        (LaunchCall{.path = "/usr/bin/osascript",
            .arguments
            = {"-e", R"(display notification "It's '<b>bold</b>' 🎉" with title "A 'title'")"},
            .isWaitedFor = false}));
}

} // namespace
} // namespace quillbrook
