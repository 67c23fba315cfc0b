#include "platform/virtual/VirtualMachine.h"

#include <utility>

namespace quillbrook {

VirtualMachine::VirtualMachine(std::filesystem::path dataDirectory, double startsAt)
    : clock(startsAt)
    , directories(std::move(dataDirectory))
{
    for (const char* tool : {"/usr/bin/osascript", "/usr/bin/tccutil", "/bin/bash"}) {
        childProcess.install(tool, FinishedProcess{});
    }
}

Platform VirtualMachine::platform()
{
    return {.clock = clock,
        .mainLoop = mainLoop,
        .workQueues = workQueues,
        .workspace = workspace,
        .humanInput = humanInput,
        .accessibility = accessibility,
        .keyCounting = keyCounting,
        .inputSource = inputSource,
        .kernelFigures = kernelFigures,
        .childProcess = childProcess,
        .userDefaults = userDefaults,
        .bundleValues = bundleValues,
        .localeText = localeText,
        .directories = directories,
        .loginItem = loginItem,
        .timeZone = timeZone,
        .hostFacts = hostFacts,
        .appearance = appearance,
        .idleMemory = idleMemory,
        .notices = notices,
        .windowActivation = windowActivation,
        .systemSound = systemSound,
        .permissionGuide = permissionGuide,
        .panelItem = panelItem,
        .desktopExtension = desktopExtension};
}

void VirtualMachine::bringToFront(std::string name, std::string bundleIdentifier)
{
    workspace.setFront(RunningApplication{
        .localizedName = std::move(name), .bundleIdentifier = std::move(bundleIdentifier)});
}

void VirtualMachine::endProcess()
{
    mainLoop.clear();
    workspace.clearObservers();
    keyCounting.clear();
}

} // namespace quillbrook
