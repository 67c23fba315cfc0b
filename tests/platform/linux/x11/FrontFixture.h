#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/x11/FrontApplication.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/x11/X11Fixture.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quillbrook {

/// The application in front of a desktop whose windows and window manager are played by hand.
class FrontFixture : public X11Test {
protected:
    using X11Test::X11Test;

    std::string frontName() const
    {
        return front->current() ? front->current()->localizedName.value_or("-") : "none";
    }

    bool isInFront(const std::string& className)
    {
        return becomesTrue([&] { return frontName() == className; });
    }

    void bringToFront(const std::string& className)
    {
        client.activate(client.makeWindow(className));
        ASSERT_TRUE(isInFront(className));
    }

    std::string frontBundle() const { return front->current()->bundleIdentifier.value_or("-"); }

    DesktopEntries entries{{}, {}};
    std::unique_ptr<FrontApplication> front
        = std::make_unique<FrontApplication>(x11, entries, mainLoop);
};

} // namespace quillbrook
