#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace quillbrook {

/// A value for each pair of application and bundle identifier that rows name, found by the bytes
/// of both, which have no NUL in them. A long period has tens of thousands of rows of a few pairs,
/// so that whatever a pair needs is done once.
template <typename T>
class ByApplication {
public:
    /// The pair's value; what `make` gives when the pair is met for the first time. Stays where it
    /// is as others come.
    template <typename Make>
    T& of(std::string_view appName, std::string_view bundleId, Make make)
    {
        key.assign(bundleId).append(1, '\0').append(appName);
        const auto known = values.find(key);
        return known != values.end() ? known->second : values.emplace(key, make()).first->second;
    }

private:
    std::string key{}; // kept, so that no row allocates
    std::unordered_map<std::string, T> values{};
};

} // namespace quillbrook
