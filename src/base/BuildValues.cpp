#include "base/BuildValues.h"

#include "base/BuildDate.h"

namespace quillbrook {

std::string_view buildVersion()
{
    return QUILLBROOK_VERSION;
}

std::optional<std::string> buildDate()
{
    return kBuildDate.empty() ? std::nullopt : std::optional<std::string>(kBuildDate);
}

} // namespace quillbrook
