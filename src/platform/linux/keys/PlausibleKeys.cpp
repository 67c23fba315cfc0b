#include "platform/linux/keys/PlausibleKeys.h"

namespace quillbrook {

namespace {

constexpr std::uint32_t kMaxKeys = 10'000; // of one second, with all that scanners and tools type
constexpr int kMaxTellings = 90; // of one a second, some of which may come late
constexpr double kMinuteSec = 60;

} // namespace

bool PlausibleKeys::areBelieved(std::uint32_t keys, double now)
{
    if (tellings == 0 || now - minuteBegan >= kMinuteSec) {
        minuteBegan = now;
        tellings = 0;
    }
    if (tellings >= kMaxTellings) {
        return false;
    }
    ++tellings;
    return keys > 0 && keys <= kMaxKeys;
}

} // namespace quillbrook
