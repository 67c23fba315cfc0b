#include "keycounter/keyboards/EvdevDevices.h"

#include "keycounter/keyboards/KeyDowns.h"

#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <systemd/sd-device.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>

namespace quillbrook {

namespace {

/// A set of numbers below `size`, as the kernel writes them.
template <unsigned size>
struct KernelBits {
    static constexpr unsigned kWordBits = sizeof(unsigned long) * 8;

    std::array<unsigned long, (size + kWordBits - 1) / kWordBits> words{};

    bool contains(unsigned bit) const
    {
        return ((words.at(bit / kWordBits) >> (bit % kWordBits)) & 1U) != 0;
    }
    void insert(unsigned bit) { words.at(bit / kWordBits) |= 1UL << (bit % kWordBits); }
};

constexpr std::array kLetters
    = {KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Y, KEY_U, KEY_I, KEY_O, KEY_P, KEY_A, KEY_S, KEY_D,
        KEY_F, KEY_G, KEY_H, KEY_J, KEY_K, KEY_L, KEY_Z, KEY_X, KEY_C, KEY_V, KEY_B, KEY_N, KEY_M};

bool hasLetters(int device)
{
    KernelBits<KEY_CNT> keys;
    if (ioctl(device, EVIOCGBIT(EV_KEY, sizeof keys.words), keys.words.data()) < 0) {
        return false;
    }
    return std::ranges::any_of(
        kLetters, [&keys](unsigned letter) { return keys.contains(letter); });
}

template <unsigned size>
void setMask(int device, std::uint32_t type, const KernelBits<size>& bits)
{
    input_mask mask{};
    mask.type = type;
    mask.codes_size = sizeof bits.words;
    mask.codes_ptr = reinterpret_cast<std::uintptr_t>(bits.words.data());
    ioctl(device, EVIOCSMASK, &mask); // a kernel that can't sends all, which is passed over then
}

/// Lets the kernel send no more than what counts: neither the movements of a mouse that is a part
/// of the keyboard, nor modifiers.
void askForCountedKeysOnly(int device)
{
    KernelBits<EV_CNT> types;
    types.insert(EV_KEY);
    KernelBits<KEY_CNT> keys;
    for (unsigned code = 0; code < KEY_CNT; ++code) {
        if (isCountedKey(code)) {
            keys.insert(code);
        }
    }
    setMask(device, EV_KEY, keys);
    setMask(device, EV_SYN, types); // stands for the types themselves here
}

struct UnrefDevice {
    void operator()(sd_device* device) const { sd_device_unref(device); }
};

} // namespace

OpenedDevice EvdevDevices::openKeyboard(const std::string& path)
{
    FileDescriptor device(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!device.isOpen()) {
        return {.isRefused = errno == EACCES || errno == EPERM};
    }
    if (!hasLetters(device.get())) {
        return {};
    }
    askForCountedKeysOnly(device.get());
    return {.descriptor = std::move(device)};
}

std::optional<std::string> EvdevDevices::seatOf(const std::string& path)
{
    sd_device* found = nullptr;
    if (sd_device_new_from_devname(&found, path.c_str()) < 0) {
        return kFirstSeat;
    }
    const std::unique_ptr<sd_device, UnrefDevice> device(found);
    const char* seat = nullptr;
    if (sd_device_get_property_value(device.get(), "ID_SEAT", &seat) >= 0) {
        return seat;
    }
    const bool isDeviceManagerThere = access("/run/udev", F_OK) == 0;
    if (isDeviceManagerThere && sd_device_get_is_initialized(device.get()) <= 0) {
        return std::nullopt;
    }
    return kFirstSeat;
}

} // namespace quillbrook
