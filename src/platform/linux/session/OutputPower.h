#pragma once

#include <algorithm>
#include <cstdint>
#include <map>

namespace quillbrook {

/// Which outputs of a desktop are switched off.
class OutputPower {
public:
    using Output = std::uint32_t;

    void set(Output output, bool isOff) { outputs[output] = isOff; }
    void remove(Output output) { outputs.erase(output); }
    void clear() { outputs.clear(); }

    /// Whether there are outputs and all of them are off. Without any nobody knows.
    bool areAllOff() const
    {
        return !outputs.empty()
            && std::ranges::all_of(outputs, [](const auto& output) { return output.second; });
    }

private:
    std::map<Output, bool> outputs{};
};

} // namespace quillbrook
