#pragma once

#include "platform/Application.h"

namespace quillbrook {

/// The application object of Qt. Main thread only.
class QtApplication final : public Application {
public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void activate() override;
    AlertAnswer runAlert(const Alert& alert) override;
    void openApplicationsDirectory() override;

    /// Whether a window of ours is on the screen, and not minimised.
    bool hasVisibleWindows() const;
};

} // namespace quillbrook
