#include "tests/faults/DiskFaults.h"

#include "support/EngineFixture.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

/// A number out of the environment.
std::uint32_t wanted(const char* variable, std::uint32_t otherwise)
{
    const char* text = std::getenv(variable);
    return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10))
                           : otherwise;
}

/// Keeps the lines of the engine's log to the file.
class Silence {
public:
    Silence() : output(dup(STDOUT_FILENO)) { std::freopen("/dev/null", "w", stdout); }
    ~Silence()
    {
        std::fflush(stdout);
        dup2(output, STDOUT_FILENO);
        close(output);
    }

    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    int output;
};

/// A recorder at work on a disk that misbehaves for a while, and again. $QUILLBROOK_SWITCHES says
/// how long, $QUILLBROOK_SEED how it goes.
class DiskFaultsTest : public EngineFixture {
protected:
    struct Row {
        std::string beginning;
        std::string end; // NULL while it is open
    };
    using Rows = std::map<std::int64_t, Row>;

    DiskFaultsTest()
    {
        setDiskFaultsFolder(directory.path().c_str());
        diskFaults().seed = seed;
    }
    ~DiskFaultsTest() override { diskFaults().perMille = 0; }

    std::uint32_t below(std::uint32_t limit)
    {
        return std::uniform_int_distribution<std::uint32_t>(0, limit - 1)(random);
    }

    void work(double seconds)
    {
        for (double left = seconds; left > 0; left -= 5) {
            machine.humanInput.happenNow();
            machine.runFor(std::min(left, 5.0));
        }
    }

    void switchOnce()
    {
        present = "App" + std::to_string(++switches % 9);
        bringToFront(present);
        machine.keyCounting.press(below(4));
        work(3 + below(4));
    }

    void lookAway()
    {
        machine.workspace.notify(WorkspaceNotification::screensDidSleep);
        machine.runFor(6);
        machine.workspace.notify(WorkspaceNotification::screensDidWake);
        work(3);
    }

    void sleep()
    {
        machine.workspace.notify(WorkspaceNotification::willSleep);
        machine.runFor(below(2));
        machine.mainLoop.jumpTo(machine.clock.now() + 3600);
        machine.workspace.notify(WorkspaceNotification::didWake);
        work(61);
    }

    void restart()
    {
        crash();
        start();
        work(61);
    }

    void liveOn()
    {
        const Silence silence;
        const std::uint32_t chance = below(100);
        if (chance < 3) {
            lookAway();
        } else if (chance < 4) {
            sleep();
        } else if (chance < 5) {
            restart();
        } else if (chance < 6) {
            machine.runFor(400);
            work(61);
        }
        switchOnce();
    }

    /// One that could not open its store when it was started records nothing until then.
    void recover()
    {
        const Silence silence;
        start();
        work(61);
    }

    void workQuietly()
    {
        const Silence silence;
        switchOnce();
    }

    /// A start takes the later of two sessions of one application that began within five seconds.
    static bool isDouble(const Rows& known, Rows::const_iterator row)
    {
        const auto nameOf
            = [](const std::string& text) { return text.substr(0, text.find('|', 1)); };
        const auto startOf = [](const std::string& text) {
            const auto behind = text.rfind('|');
            return std::stod(text.substr(text.rfind('|', behind - 1) + 1));
        };
        const std::string& beginning = row->second.beginning;
        return std::any_of(known.begin(), row, [&](const auto& other) {
            const std::string& its = other.second.beginning;
            return nameOf(its) == nameOf(beginning)
                && std::abs(startOf(its) - startOf(beginning)) < 5;
        });
    }

    /// Compares what is there with what was there, and remembers it.
    void look(Rows& known, const std::string& columns, std::int64_t lookBack)
    {
        const std::int64_t first = known.empty() ? 0 : known.rbegin()->first - lookBack;
        const std::string sql = "SELECT id, " + columns + " WHERE id >= " + std::to_string(first);
        Rows there;
        for (const std::string& row : store().rows(sql)) {
            const auto afterId = row.find('|');
            const auto beforeEnd = row.rfind('|');
            there[std::stoll(row)]
                = {row.substr(afterId, beforeEnd - afterId), row.substr(beforeEnd + 1)};
        }
        std::vector<std::int64_t> doubles; // condemned also by each other
        for (auto row = known.lower_bound(first); row != known.end(); ++row) {
            const auto found = there.find(row->first);
            if (found == there.end() && isDouble(known, row)) {
                doubles.push_back(row->first);
                continue;
            }
            ASSERT_NE(found, there.end()) << "lost: " << row->second.beginning;
            ASSERT_EQ(found->second.beginning, row->second.beginning);
            if (row->second.end != "NULL") {
                ASSERT_EQ(found->second.end, row->second.end) << row->second.beginning;
            }
        }
        for (const std::int64_t id : doubles) {
            known.erase(id);
        }
        for (auto& [id, row] : there) {
            known[id] = row;
        }
    }

    void lookAtAll(std::int64_t lookBack)
    {
        look(sessionRows, "app_name, bundle_id, started_at, close_type, ended_at FROM app_sessions",
            lookBack);
        look(idleRows, "started_at, ended_at FROM idle_periods", lookBack);
        look(keyRows,
            "timestamp, app_name, input_method, keystroke_count, keystroke_count FROM keystrokes",
            lookBack);
    }

    /// How often the person was told something.
    std::ptrdiff_t notifications() const
    {
        return std::ranges::count_if(machine.calls.all(), [](const OutsideCall& call) {
            const auto* launch = std::get_if<LaunchCall>(&call.what);
            return launch != nullptr && launch->path.ends_with("osascript");
        });
    }

    std::ptrdiff_t filesBeside() const
    {
        return std::distance(fs::directory_iterator(directory.path()), {});
    }

    static constexpr std::int64_t kLookBack = 20;
    static constexpr std::int64_t kAll = 1'000'000'000;

    std::uint32_t seed = wanted("QUILLBROOK_SEED", 1);
    std::mt19937 random{seed};
    std::uint32_t switches = 0;
    std::string present{};
    Rows sessionRows{};
    Rows idleRows{};
    Rows keyRows{};
};

TEST_F(DiskFaultsTest, NothingWrittenIsLostAndRecordingGoesOnBehindEachFault)
{
    const std::uint32_t count = wanted("QUILLBROOK_SWITCHES", 500);
    constexpr std::array<std::uint32_t, 5> kRates = {5, 50, 200, 600, 1000};
    startWorkingIn("Editor");
    const std::ptrdiff_t files = filesBeside();
    std::ptrdiff_t badTimes = 0;
    while (switches < count && !HasFatalFailure()) {
        // Bad for a while, and read by a disk that behaves.
        ++badTimes;
        const std::uint32_t rate = kRates.at(below(kRates.size()));
        for (std::uint32_t bad = below(20); bad > 0 && !HasFatalFailure(); --bad) {
            diskFaults().perMille = rate;
            liveOn();
            diskFaults().perMille = 0;
            lookAtAll(kLookBack);
        }
        recover();
        for (std::uint32_t good = 2 + below(20); good > 0 && !HasFatalFailure(); --good) {
            workQuietly();
            lookAtAll(kLookBack);
        }
        ASSERT_EQ(store().value("SELECT app_name || ' ' || (ended_at IS NULL) FROM app_sessions "
                                "ORDER BY id DESC LIMIT 1"),
            present + " 1")
            << "seed " << seed << ", switch " << switches << "\n"
            << logText().substr(logText().size() - std::min<std::size_t>(logText().size(), 3000));
        ASSERT_EQ(store().value("PRAGMA integrity_check"), "ok");
    }
    lookAtAll(kAll);
    std::fprintf(stderr,
        "%u switches, seed %u: %u faults of %u calls; %zu sessions, %zu pauses, "
        "%td bad times, %td notifications\n",
        switches, seed, diskFaults().faults.load(), diskFaults().calls.load(), sessionRows.size(),
        idleRows.size(), badTimes, notifications());
    EXPECT_GT(diskFaults().faults, count / 10);
    EXPECT_LE(notifications(), badTimes) << "nobody is told of one bad time twice";
    EXPECT_EQ(filesBeside(), files) << "a disk that takes nothing has damaged nothing";
}

} // namespace
} // namespace quillbrook
