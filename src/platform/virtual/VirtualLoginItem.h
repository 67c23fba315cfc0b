#pragma once

#include "platform/LoginItem.h"

#include <utility>

namespace quillbrook {

/// A login item that is off at first, and that can be made to refuse changes.
class VirtualLoginItem final : public LoginItem {
public:
    bool isEnabled() const override { return enabled; }
    std::optional<LoginItemFailure> enable() override { return change(true); }
    std::optional<LoginItemFailure> disable() override { return change(false); }

    void setEnabled(bool isEnabled) { enabled = isEnabled; }

    /// From now on every change fails for this reason; none lets them succeed again.
    void refuse(std::optional<LoginItemFailure> reason) { refusal = std::move(reason); }

private:
    std::optional<LoginItemFailure> change(bool isEnabled)
    {
        if (!refusal) {
            enabled = isEnabled;
        }
        return refusal;
    }

    bool enabled = false;
    std::optional<LoginItemFailure> refusal{};
};

} // namespace quillbrook
