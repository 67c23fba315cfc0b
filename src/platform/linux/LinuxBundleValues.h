#pragma once

#include "platform/BundleValues.h"

namespace quillbrook {

/// The values that the build fixed.
class LinuxBundleValues final : public BundleValues {
public:
    std::optional<std::string> infoValue(std::string_view key) const override;
    std::string bundlePath() const override;
};

} // namespace quillbrook
