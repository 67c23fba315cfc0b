#include "lab/Scenario.h"
#include "tests/fuzz/FuzzInput.h"

#include <cmath>
#include <variant>

/// Whatever a script holds: either it is one, with its events in order and an end, or the line of
/// its fault is told.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto read = lab::scenarioIn(text);
    if (const auto* fault = std::get_if<lab::ScenarioFault>(&read)) {
        require(fault->line >= 1 && !fault->what.empty());
        requireValid(fault->what);
        require(fault->what.find('\n') == std::string::npos);
        return 0;
    }
    const auto& scenario = *std::get_if<lab::Scenario>(&read);
    require(!scenario.events.empty() && scenario.events.back().name == "end");
    double last = 0;
    for (const lab::ScenarioEvent& event : scenario.events) {
        require(std::isfinite(event.at) && event.at >= last);
        last = event.at;
    }
    return 0;
}
