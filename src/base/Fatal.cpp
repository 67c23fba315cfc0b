#include "base/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace quillbrook {

void fatal(std::string_view reason)
{
    std::fprintf(stderr, "quillbrook: %.*s\n", static_cast<int>(reason.size()), reason.data());
    std::abort();
}

} // namespace quillbrook
