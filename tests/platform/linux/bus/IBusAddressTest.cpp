#include "platform/linux/bus/IBusAddress.h"

#include "support/TemporaryDirectory.h"

#include <QString>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

std::string machineId()
{
    for (const char* path : {"/etc/machine-id", "/var/lib/dbus/machine-id"}) {
        std::ifstream stream(path);
        if (std::string id; stream >> id) {
            return id;
        }
    }
    return {};
}

class IBusAddressTest : public testing::Test {
protected:
    IBusAddressTest()
    {
        setenv("XDG_CONFIG_HOME", directory.path().c_str(), 1);
        setenv("DISPLAY", ":7.0", 1);
        unsetenv("IBUS_ADDRESS");
        unsetenv("WAYLAND_DISPLAY");
    }

    /// Lets IBus leave an address for a display, so many minutes ago.
    void leave(const std::string& display, const std::string& address, int minutesAgo)
    {
        const fs::path folder = directory.path() / "ibus" / "bus";
        fs::create_directories(folder);
        const fs::path path = folder / (machineId() + "-unix-" + display);
        std::ofstream(path) << "IBUS_ADDRESS=" << address << "\n";
        fs::last_write_time(
            path, fs::file_time_type::clock::now() - std::chrono::minutes(minutesAgo));
    }

    TemporaryDirectory directory{};
};

TEST_F(IBusAddressTest, IsThatOfTheDisplay)
{
    EXPECT_EQ(ibusAddress(), QString());
    leave("7", "unix:path=/x", 1);
    leave("8", "unix:path=/other", 0);
    EXPECT_EQ(ibusAddress(), QStringLiteral("unix:path=/x"));
    setenv("IBUS_ADDRESS", "unix:path=/named", 1);
    EXPECT_EQ(ibusAddress(), QStringLiteral("unix:path=/named"));
    unsetenv("IBUS_ADDRESS");
}

TEST_F(IBusAddressTest, OnWaylandIsWhatWasWrittenLast)
{
    setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    leave("wayland-0", "unix:path=/wayland", 5);
    EXPECT_EQ(ibusAddress(), QStringLiteral("unix:path=/wayland"));
    leave("7", "unix:path=/x", 1); // the one of Wayland is of an earlier session
    EXPECT_EQ(ibusAddress(), QStringLiteral("unix:path=/x"));
    leave("wayland-0", "unix:path=/wayland", 0);
    EXPECT_EQ(ibusAddress(), QStringLiteral("unix:path=/wayland"));
    unsetenv("WAYLAND_DISPLAY");
}

} // namespace
} // namespace quillbrook
