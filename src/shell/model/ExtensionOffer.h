#pragma once

#include "base/Lifetime.h"
#include "platform/Platform.h"

namespace quillbrook {

class Application;

/// Tells the person once what the desktop's extension of ours is for, and has it switched on if
/// they want that; and once that a new login comes before it. Main thread only.
class ExtensionOffer {
public:
    ExtensionOffer(const Platform& platform, Application& application);
    ~ExtensionOffer();

    ExtensionOffer(const ExtensionOffer&) = delete;
    ExtensionOffer& operator=(const ExtensionOffer&) = delete;

    /// From now on there is a window before which one may ask; again it changes nothing.
    void begin();

private:
    void lookLater();
    void look();
    void ask(bool areAllOff);
    void tellOfLogin();
    bool isFirstTime(const char* key);

    Platform platform;
    Application& application;
    bool hasBegun = false;

    Lifetime lifetime{};
};

} // namespace quillbrook
