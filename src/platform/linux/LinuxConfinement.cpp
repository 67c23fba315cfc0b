#include "platform/linux/LinuxConfinement.h"

#include "platform/linux/confinement/CoreDumps.h"
#include "platform/linux/confinement/NetworkAddress.h"
#include "platform/linux/confinement/SystemCallFilter.h"
#include "platform/linux/words/Notice.h"

#include <cstdlib>

namespace quillbrook {

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

} // namespace quillbrook
