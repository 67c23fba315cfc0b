#pragma once

#include "platform/Application.h"

#include <optional>
#include <vector>

namespace quillbrook {

/// A desktop that keeps what it was asked, and answers alerts as told.
class VirtualApplication final : public Application {
public:
    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }
    void makeKey(std::uint64_t window) override { key = window; }
    void activate() override { ++activations; }
    AlertAnswer runAlert(const Alert& alert) override
    {
        shownAlerts.push_back(alert);
        return answer;
    }
    void openApplicationsDirectory() override { ++directoryOpenings; }

    void setAnswer(AlertAnswer newAnswer) { answer = newAnswer; }

    /// Empty until it was first set.
    std::optional<ActivationPolicy> activationPolicy() const { return policy; }
    /// 0 until one was made it.
    std::uint64_t keyWindow() const { return key; }
    int activationCount() const { return activations; }
    int directoryOpeningCount() const { return directoryOpenings; }
    const std::vector<Alert>& alerts() const { return shownAlerts; }

private:
    std::optional<ActivationPolicy> policy{};
    AlertAnswer answer = AlertAnswer::secondButton;
    std::uint64_t key = 0;
    int activations = 0;
    int directoryOpenings = 0;
    std::vector<Alert> shownAlerts{};
};

} // namespace quillbrook
