#include "platform/linux/proc/ProcIdleMemory.h"

#include <malloc.h>
#include <sys/mman.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace quillbrook {

namespace {

/// Whether a line of the list of mappings tells of a font file that is only read. Nothing was
/// ever written to such pages, so that they can be dropped without a loss.
bool isFont(std::string_view line)
{
    constexpr std::array<std::string_view, 3> kEndings = {".otf", ".ttc", ".ttf"};
    const bool isOnlyRead = line.find(" r--") != std::string_view::npos;
    bool hasEnding = false;
    for (const std::string_view ending : kEndings) {
        hasEnding = hasEnding || line.ends_with(ending);
    }
    return isOnlyRead && hasEnding;
}

/// Drops the pages of the mapping that a line such as "7f00-7f80 r--p ..." tells of.
void dropPages(std::string_view line)
{
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    const char* last = line.data() + line.size();
    const auto first = std::from_chars(line.data(), last, begin, 16);
    if (first.ec != std::errc() || first.ptr == last || *first.ptr != '-') {
        return;
    }
    if (std::from_chars(first.ptr + 1, last, end, 16).ec == std::errc() && begin < end) {
        // The kernel tells addresses as text.
        // NOLINTNEXTLINE(performance-no-int-to-ptr)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
    }
}

} // namespace

void ProcIdleMemory::giveBack()
{
    std::ifstream mappings("/proc/self/maps");
    std::string line;
    while (std::getline(mappings, line)) {
        if (isFont(line)) {
            dropPages(line);
        }
    }
    malloc_trim(0);
}

} // namespace quillbrook
