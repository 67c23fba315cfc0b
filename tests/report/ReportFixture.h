#pragma once

#include "base/Text.h"
#include "engine/MonitorEngine.h"
#include "platform/virtual/VirtualMachine.h"
#include "report/DataProvider.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace quillbrook {

/// A store that the real engine made, on the virtual machine. Times of rows are seconds after
/// `kMidnight`, when a day of UTC+8 starts; the clock stands at `kNow`.
class ReportFixture : public testing::Test {
protected:
    static constexpr double kMidnight = 1767196800; // 2025-12-31T16:00:00Z, 2026-01-01 in UTC+8
    static constexpr double kNow = kMidnight + 15 * 3600;

    ReportFixture()
    {
        {
            MonitorEngine engine(machine.platform());
            engine.start();
            engine.stop();
        }
        machine.endProcess();
        exec("DELETE FROM app_sessions; DELETE FROM idle_periods; DELETE FROM boot_events");
    }

    std::string path() const { return (directory.path() / "monitor.db").string(); }

    void exec(const std::string& sql) const { StoreReader(path()).exec(sql); }

    /// A closed session.
    void session(const std::string& name, double start, double end,
        const std::string& bundle = "org.example", int closeType = 0) const
    {
        exec(filled("INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, "
                    "duration_sec, close_type) VALUES ('{}', '{}', {}, {}, {}, {})",
            {sqlQuoted(name), sqlQuoted(bundle), shortestText(kMidnight + start),
                shortestText(kMidnight + end), shortestText(end - start),
                std::to_string(closeType)}));
    }

    void keys(double time, const std::string& app, const std::string& method, int count) const
    {
        exec(filled("INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
                    "VALUES ({}, '{}', {}, {})",
            {shortestText(kMidnight + time), app, method, std::to_string(count)}));
    }

    DashboardData read(const RefreshContext& ctx)
    {
        return performRefreshSync(machine.platform(), path(), ctx);
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kNow};
};

} // namespace quillbrook
