#pragma once

#include "platform/BundleValues.h"

#include <map>
#include <utility>

namespace quillbrook {

/// A package whose values are set by hand; at first it has none.
class VirtualBundleValues final : public BundleValues {
public:
    std::optional<std::string> infoValue(std::string_view key) const override
    {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    std::string bundlePath() const override { return path; }

    void setBundlePath(std::string newPath) { path = std::move(newPath); }
    void set(std::string key, std::string value)
    {
        values.insert_or_assign(std::move(key), std::move(value));
    }

    void remove(const std::string& key) { values.erase(key); }

private:
    std::map<std::string, std::string, std::less<>> values{};
    std::string path = "/Applications/Quillbrook.app";
};

} // namespace quillbrook
