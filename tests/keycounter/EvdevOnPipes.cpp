// Loaded before other libraries: lets the counter service take pipes for event devices of the
// kernel, which machines that build have none of, and hear of seats from a file. All else of it is
// as it is installed.

#include <dlfcn.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

bool isPipe(int descriptor)
{
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

/// The pipes from event90 on have the buttons of a mouse, all others letters.
int setKeysOf(int descriptor, unsigned char* bits, std::size_t size)
{
    std::error_code failure;
    const auto path
        = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), failure);
    const bool isMouse = path.filename().string().starts_with("event9");
    std::fill_n(bits, size, 0);
    for (const unsigned code : isMouse ? std::vector{BTN_LEFT, BTN_RIGHT}
                                       : std::vector{KEY_A, KEY_Z, KEY_ENTER, KEY_LEFTSHIFT}) {
        bits[code / 8] |= static_cast<unsigned char>(1U << (code % 8)); // NOLINT
    }
    return static_cast<int>(size);
}

/// The file's lines: who is active on the first seat, and who else has a session there.
std::vector<std::vector<uid_t>> seats()
{
    std::vector<std::vector<uid_t>> lines;
    std::ifstream file(std::getenv("TEST_SEATS"));
    for (std::string line; std::getline(file, line);) {
        lines.emplace_back();
        for (std::size_t at = 0; at < line.size();
             at = std::min(line.find(' ', at), line.size() - 1) + 1) {
            lines.back().push_back(static_cast<uid_t>(std::stoul(line.substr(at))));
        }
    }
    lines.resize(2);
    return lines;
}

} // namespace

extern "C" {

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    std::va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (_IOC_TYPE(request) == 'E' && isPipe(descriptor)) {
        if (_IOC_NR(request) == _IOC_NR(EVIOCGBIT(EV_KEY, 0))) {
            return setKeysOf(descriptor, static_cast<unsigned char*>(argument), _IOC_SIZE(request));
        }
        errno = ENOTTY;
        return -1;
    }
    static const auto real
        = reinterpret_cast<int (*)(int, unsigned long, ...)>(dlsym(RTLD_NEXT, "ioctl"));
    return real(descriptor, request, argument);
}

int sd_seat_get_active(const char* seat, char** session, uid_t* user)
{
    if (std::getenv("TEST_SEATS") == nullptr) {
        static const auto real = reinterpret_cast<decltype(&sd_seat_get_active)>(
            dlsym(RTLD_NEXT, "sd_seat_get_active"));
        return real(seat, session, user);
    }
    const auto active = seats().front();
    if (active.empty()) {
        return -ENODATA;
    }
    *user = active.front();
    return 0;
}

int sd_uid_get_seats(uid_t user, int mustBeActive, char*** names)
{
    if (std::getenv("TEST_SEATS") == nullptr) {
        static const auto real
            = reinterpret_cast<decltype(&sd_uid_get_seats)>(dlsym(RTLD_NEXT, "sd_uid_get_seats"));
        return real(user, mustBeActive, names);
    }
    const auto lines = seats();
    const bool isActive = std::ranges::count(lines[0], user) > 0;
    return isActive || (mustBeActive == 0 && std::ranges::count(lines[1], user) > 0) ? 1 : 0;
}

} // extern "C"
