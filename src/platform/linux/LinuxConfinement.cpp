#include "platform/linux/LinuxConfinement.h"

#include "base/OlderThread.h"
#include "platform/linux/confinement/CoreDumps.h"
#include "platform/linux/confinement/NetworkAddress.h"
#include "platform/linux/confinement/ReplacedFolder.h"
#include "platform/linux/confinement/SystemCallFilter.h"
#include "platform/linux/confinement/WritablePlaces.h"
#include "platform/linux/words/Notice.h"
#include "platform/qt/QtDirectories.h"

#include <cstdlib>
#include <optional>
#include <system_error>
#include <vector>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

const char* environmentValue(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// A display or a bus on this machine is reached through local sockets, which stay.
bool isDesktopOnNetwork()
{
    return isDisplayOnNetwork(environmentValue("DISPLAY"))
        || isBusOnNetwork(environmentValue("DBUS_SESSION_BUS_ADDRESS"))
        || isBusOnNetwork(environmentValue("DBUS_SYSTEM_BUS_ADDRESS"));
}

/// The folder that the store is in, also when a link leads to it.
fs::path truePlaceOf(const fs::path& store)
{
    std::error_code failure;
    const fs::path place = fs::weakly_canonical(store, failure).parent_path();
    return failure ? store.parent_path() : place;
}

/// The data directory, where this start has made it.
std::optional<fs::path>& madeDirectory()
{
    static std::optional<fs::path> directory;
    return directory;
}

std::vector<WritablePlace> writablePlaces()
{
    std::vector<WritablePlace> places{
        // Who may use a device is told by its own mode.
        {.folder = "/dev", .kind = WritablePlace::Kind::existingFiles},
        // Memory that is shared with the sound server has names there.
        {.folder = "/dev/shm"},
    };
    // GNOME's settings, which a tool is asked for, have their mark of changes there.
    if (const fs::path runtime = environmentValue("XDG_RUNTIME_DIR"); runtime.is_absolute()) {
        places.push_back({.folder = runtime / "dconf"});
    }
    if (const auto data = QtDirectories().dataDirectory()) {
        std::error_code ignored;
        if (fs::create_directories(*data, ignored)) {
            madeDirectory() = *data;
        }
        places.push_back({.folder = *data});
        places.push_back({.folder = truePlaceOf(storePath(*data))});
    }
    return places;
}

/// What is to go on in spite of the rule.
void prepareStores()
{
    if (const auto data = QtDirectories().dataDirectory()) {
        // What is too large to be sorted in memory; it is as private as the store.
        setenv("SQLITE_TMPDIR", data->c_str(), 1);
        openStoresInReplaced(*data);
    }
}

} // namespace

void confineThisProcess()
{
    forbidCoreDumps();
    const bool isNetworkNeeded = isDesktopOnNetwork();
    if (isNetworkNeeded) {
        notice("显示服务或总线要经过网络，未向内核申请断网");
    }
    if (!forbidSystemCalls(isNetworkNeeded ? Sockets::all : Sockets::local)) {
        notice("内核不能过滤系统调用，未能自行断网");
    }
}

void confineWriting()
{
    if (!canRefuseWriting()) {
        notice("内核没有 Landlock，未限定可以写入的目录");
        return;
    }
    const auto places = writablePlaces();
    prepareStores();
    if (!startOlderThread() || !writeOnlyIn(places)) {
        notice("未能限定可以写入的目录");
    }
}

void leaveNoEmptyDirectory()
{
    if (madeDirectory()) {
        onOlderThread([] {
            std::error_code ignored;
            fs::remove(*madeDirectory(), ignored);
        });
    }
}

} // namespace quillbrook
