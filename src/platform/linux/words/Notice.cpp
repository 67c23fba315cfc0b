#include "platform/linux/words/Notice.h"

#include "base/Text.h"

#include <cstdio>
#include <string>

namespace quillbrook {

void notice(std::string_view text)
{
    const std::string line = "quillbrook: " + validUtf8(text) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace quillbrook
