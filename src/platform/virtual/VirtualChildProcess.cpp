#include "platform/virtual/VirtualChildProcess.h"

namespace quillbrook {

void VirtualChildProcess::launch(
    const std::string& path, const std::vector<std::string>& arguments, FailureHandler failed)
{
    calls.add(LaunchCall{path, arguments, false});
    if (!programs.contains(path)) {
        failed(LaunchFailure{"not found: " + path});
    }
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
