#pragma once

#include "engine/MonitorEngine.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillbrook {

/// The real engine on the virtual machine, in a directory of its own. Times in rows are seconds
/// after `kStart`.
class EngineFixture : public testing::Test {
protected:
    static constexpr double kStart = 1767225600; // 2026-01-01T00:00:00Z

    void start()
    {
        if (!engine) {
            engine = std::make_unique<MonitorEngine>(machine.platform());
        }
        engine->start();
    }

    void stop()
    {
        engine->stop();
        crash();
    }

    /// The engine's end without `stop`.
    void crash()
    {
        engine.reset();
        machine.endProcess();
    }

    /// Starts with a person at work in an application, whose session begins 60 seconds on.
    void startWorkingIn(const std::string& name, const std::string& bundleIdentifier)
    {
        machine.bringToFront(name, bundleIdentifier);
        start();
        machine.runFor(59);
        machine.humanInput.happenNow();
        machine.runFor(1);
    }

    void startWorkingIn(const std::string& name) { startWorkingIn(name, "org.example." + name); }

    void bringToFront(const std::string& name)
    {
        machine.bringToFront(name, "org.example." + name);
    }

    std::filesystem::path file(const std::string& name) const { return directory.path() / name; }
    StoreReader store() const { return StoreReader(file("monitor.db")); }

    /// "name|start|end|close type", in order of writing.
    std::vector<std::string> sessions() const
    {
        return store().rows("SELECT app_name, CAST(started_at - 1767225600 AS INTEGER), "
                            "CAST(ended_at - 1767225600 AS INTEGER), close_type "
                            "FROM app_sessions ORDER BY id");
    }

    std::vector<std::string> sessionNames() const
    {
        return store().rows("SELECT app_name FROM app_sessions ORDER BY id");
    }

    /// "start|end|source type", in order of writing.
    std::vector<std::string> idlePeriods() const
    {
        return store().rows("SELECT CAST(started_at - 1767225600 AS INTEGER), "
                            "CAST(ended_at - 1767225600 AS INTEGER), source_type "
                            "FROM idle_periods ORDER BY id");
    }

    std::string textOf(const std::string& name) const
    {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string logText() const { return textOf("monitor.log"); }

    std::size_t countInLog(const std::string& text) const
    {
        const std::string log = logText();
        std::size_t count = 0;
        for (auto at = log.find(text); at != std::string::npos; at = log.find(text, at + 1)) {
            ++count;
        }
        return count;
    }

    /// The scripts by which notifications were asked for.
    std::vector<std::string> notifications() const
    {
        std::vector<std::string> found;
        for (const OutsideCall& call : machine.calls.all()) {
            const auto* launch = std::get_if<LaunchCall>(&call.what);
            if (launch != nullptr && launch->path == "/usr/bin/osascript") {
                EXPECT_FALSE(launch->isWaitedFor);
                found.push_back(launch->arguments.back());
            }
        }
        return found;
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kStart};
    std::unique_ptr<MonitorEngine> engine{};
};

} // namespace quillbrook
