#include "platform/virtual/VirtualChildProcess.h"

namespace quillbrook {

std::optional<LaunchFailure> VirtualChildProcess::launch(
    const std::string& path, const std::vector<std::string>& arguments)
{
    calls.add(LaunchCall{path, arguments, false});
    if (!programs.contains(path)) {
        return LaunchFailure{"not found: " + path};
    }
    return std::nullopt;
}

std::variant<FinishedProcess, LaunchFailure> VirtualChildProcess::run(
    const std::string& path, const std::vector<std::string>& arguments)
{
    calls.add(LaunchCall{path, arguments, true});
    const auto program = programs.find(path);
    if (program == programs.end()) {
        return LaunchFailure{"not found: " + path};
    }
    return program->second;
}

} // namespace quillbrook
