#include "lab/SeedCommand.h"

#include "base/Sqlite.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "lab/Arguments.h"
#include "lab/SeedHistory.h"
#include "platform/Directories.h"
#include "platform/qt/SystemClock.h"
#include "platform/virtual/VirtualMachine.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace quillbrook::lab {

namespace {

constexpr std::string_view kUsage
    = R"(usage: quillbrook-lab seed --data DIR --days N [--now T] [--seed S] [--sessions-per-day N]

Makes a store and fills it with days of plausible history.

  --data DIR              the data directory, made when missing; may not hold a store yet
  --days N                how many days
  --now T                 when the history ends, seconds since 1970; default: the real time
  --seed S                a whole number that decides all that is left to chance; default: 1
  --sessions-per-day N    default: 200
)";

std::int64_t wholeOption(
    const Arguments& arguments, std::string_view name, std::int64_t least, std::int64_t fallback)
{
    constexpr double kMost = 1e9;
    const auto value = arguments.number(name);
    if (!value) {
        return fallback;
    }
    if (*value != std::floor(*value) || *value < static_cast<double>(least) || *value > kMost) {
        arguments.reject(name, "no whole number from " + std::to_string(least) + " on");
    }
    return static_cast<std::int64_t>(*value);
}

/// Makes the store as the engine does at its start.
bool makeStore(const Platform& platform, const std::filesystem::path& path)
{
    MonitorLog log(platform.clock);
    MonitorStore store(platform, log);
    if (!store.dbOpen(path)) {
        return false;
    }
    store.dbCreateTables();
    return true;
}

} // namespace

int seedCommand(const std::vector<std::string>& texts)
{
    const Arguments arguments(
        {.usage = kUsage,
            .options = {"--data", "--days", "--now", "--seed", "--sessions-per-day"},
            .required = {"--data", "--days"}},
        texts);
    const SeedPlan plan{.days = wholeOption(arguments, "--days", 0, 0),
        .now = arguments.number("--now").value_or(SystemClock().now()),
        .seed = static_cast<std::uint64_t>(wholeOption(arguments, "--seed", 0, 1)),
        .sessionsPerDay = wholeOption(arguments, "--sessions-per-day", 0, 200)};
    const std::filesystem::path path = storePath(arguments.required("--data"));
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored)) {
        arguments.reject("--data", "there is a store already");
    }

    VirtualMachine machine(path.parent_path(), plan.now);
    if (!makeStore(machine.platform(), path)) {
        return 1;
    }
    const OpenedConnection opened = openConnection(path.string(), SQLITE_OPEN_READWRITE);
    if (opened.result != SQLITE_OK || !seedHistory(opened.connection.get(), plan)) {
        std::fprintf(stderr, "quillbrook-lab: the store can't be written: %s\n",
            sqlite3_errmsg(opened.connection.get()));
        return 1;
    }
    return 0;
}

} // namespace quillbrook::lab
