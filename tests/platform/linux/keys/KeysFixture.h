#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/keys/KeyCounterClient.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/TemporaryDirectory.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace quillbrook {

/// A system bus of the test's own, and where a service would be installed.
class KeysFixture : public testing::Test {
protected:
    KeysFixture() { setenv("DBUS_SYSTEM_BUS_ADDRESS", daemon->address.toUtf8().constData(), 1); }
    ~KeysFixture() override { unsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

    KeysFixture(const KeysFixture&) = delete;
    KeysFixture& operator=(const KeysFixture&) = delete;

    void install() const { std::ofstream(installation()) << "[D-BUS Service]\n"; }
    void uninstall() const { std::filesystem::remove(installation()); }
    std::filesystem::path installation() const { return directory.path() / "counter.service"; }

    KeyCounterClient::Surroundings surroundings()
    {
        return {.systemBus = bus(),
            .mainLoop = mainLoop,
            .now = [this] { return now; },
            .installations = {directory.path() / "none", installation()}};
    }

    Bus& bus()
    {
        if (!systemBus) {
            systemBus = std::make_unique<Bus>(Bus::Kind::system, mainLoop, workQueues);
        }
        return *systemBus;
    }

    int argc = 0;
    QCoreApplication application{argc, nullptr};
    TemporaryDirectory directory{};
    std::unique_ptr<PrivateBus> daemon = std::make_unique<PrivateBus>();
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    std::unique_ptr<Bus> systemBus{};
    double now = 1000;
};

} // namespace quillbrook
