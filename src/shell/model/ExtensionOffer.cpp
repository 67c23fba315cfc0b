#include "shell/model/ExtensionOffer.h"

#include "platform/Application.h"
#include "platform/DesktopExtension.h"
#include "platform/MainLoop.h"
#include "platform/Notices.h"
#include "platform/UserDefaults.h"

#include <string>
#include <utility>

namespace quillbrook {

ExtensionOffer::ExtensionOffer(const Platform& platform, Application& application)
    : platform(platform)
    , application(application)
{
}

ExtensionOffer::~ExtensionOffer()
{
    platform.desktopExtension.whenChanged([] {});
}

void ExtensionOffer::begin()
{
    if (!std::exchange(hasBegun, true)) {
        platform.desktopExtension.whenChanged([this] { lookLater(); });
        lookLater();
    }
}

void ExtensionOffer::lookLater()
{
    // A question goes on while the person thinks: not within what led here.
    platform.mainLoop.runAfter(0, lifetime.whileAlive([this] { look(); }));
}

void ExtensionOffer::look()
{
    using enum DesktopExtension::State;
    switch (platform.desktopExtension.state()) {
    case off:
        return ask(false);
    case allOff:
        return ask(true);
    case needsLogin:
        return tellOfLogin();
    case missing:
        return platform.notices.tell("没有安装 Quillbrook 的 GNOME 扩展");
    case broken:
        return platform.notices.tell("Quillbrook 的 GNOME 扩展在此版本的 GNOME 中无法运行");
    case notNeeded:
    case on:
        return;
    }
}

void ExtensionOffer::ask(bool areAllOff)
{
    if (!isFirstTime("extensionOffered")) {
        return;
    }
    std::string purpose
        = "扩展让 GNOME 把前台应用（仅应用标识、窗口类别和进程号）告诉本机的 Quillbrook，"
          "并在顶栏显示今日时长。在 Wayland 会话中，没有它就无法记录应用的使用时间。"
          "可随时在“扩展”应用中关闭。";
    if (areAllOff) {
        purpose += "\n\n目前所有扩展都被关闭，启用后还需在“扩展”应用中打开总开关。";
    }
    const auto answer = application.runAlert({.message = "启用 Quillbrook 的 GNOME 扩展？",
        .informativeText = purpose,
        .firstButton = "启用扩展",
        .secondButton = "暂不启用",
        .isGrave = false});
    if (answer == AlertAnswer::firstButton) {
        platform.desktopExtension.enable();
    }
}

void ExtensionOffer::tellOfLogin()
{
    if (isFirstTime("extensionLoginTold")) {
        application.runAlert({.message = "重新登录后才能启用 Quillbrook 的 GNOME 扩展",
            .informativeText = "GNOME 在下次登录时才会发现新安装的扩展。"
                               "届时 Quillbrook 会询问是否启用；在此之前无法记录应用的使用时间。",
            .firstButton = "好",
            .secondButton = "",
            .isGrave = false});
    }
}

bool ExtensionOffer::isFirstTime(const char* key)
{
    const bool isFirst = !platform.userDefaults.boolForKey(key);
    platform.userDefaults.setBool(key, true);
    return isFirst;
}

} // namespace quillbrook
