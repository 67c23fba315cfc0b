#include "keycounter/keyboards/Keyboards.h"

#include "keycounter/keyboards/InputDevices.h"

#include <linux/input.h>
#include <string.h> // NOLINT: explicit_bzero is in this one
#include <sys/epoll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::uint64_t kFolder = 0; // in place of a keyboard's number
constexpr std::size_t kMaxKeyboards = 256;
constexpr int kReadsInOneGo = 8;

/// Whether the kernel names event devices like that.
bool isEventDevice(std::string_view name)
{
    constexpr std::string_view kBeginning = "event";
    return name.starts_with(kBeginning) && name.size() > kBeginning.size()
        && name.find_first_not_of("0123456789", kBeginning.size()) == std::string_view::npos;
}

bool follow(int poll, int descriptor, std::uint64_t number)
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = number;
    return epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

} // namespace

Keyboards::Keyboards(std::string folder, InputDevices& devices)
    : folder(std::move(folder))
    , devices(devices)
    , poll(epoll_create1(EPOLL_CLOEXEC))
    , watch(this->folder)
{
    follow(poll.get(), watch.descriptor(), kFolder);
    lookThroughFolder();
}

std::map<std::string, std::uint64_t> Keyboards::takeKeyDowns()
{
    std::map<std::string, std::uint64_t> keyDowns;
    std::array<epoll_event, 32> events{};
    const int count = epoll_wait(poll.get(), events.data(), static_cast<int>(events.size()), 0);
    for (const epoll_event& event :
        std::span(events).first(static_cast<std::size_t>(std::max(count, 0)))) {
        if (event.data.u64 == kFolder) {
            followFolder();
            continue;
        }
        const auto found = keyboards.find(event.data.u64);
        if (found != keyboards.end() && !readFrom(found->second, keyDowns)) {
            keyboards.erase(found);
        }
    }
    return keyDowns;
}

/// False when there will be no more.
bool Keyboards::readFrom(Keyboard& keyboard, std::map<std::string, std::uint64_t>& keyDowns)
{
    std::array<std::byte, sizeof(input_event) * 64> bytes; // NOLINT: filled by the kernel
    std::uint64_t count = 0;
    ssize_t size = 0;
    int error = 0;
    for (int reads = 0; reads < kReadsInOneGo; ++reads) {
        size = read(keyboard.descriptor.get(), bytes.data(), bytes.size());
        error = errno;
        if (size <= 0) {
            break;
        }
        count += keyboard.keyDowns.countIn(std::span(bytes).first(static_cast<std::size_t>(size)));
        explicit_bzero(bytes.data(), static_cast<std::size_t>(size));
    }
    if (count > 0) {
        if (!keyboard.seat) {
            keyboard.seat = devices.seatOf(pathOf(keyboard.name));
        }
        if (keyboard.seat) {
            keyDowns[*keyboard.seat] += count;
        }
    }
    return size > 0 || (size < 0 && (error == EAGAIN || error == EINTR));
}

void Keyboards::followFolder()
{
    for (const FolderWatch::Change& change : watch.takeChanges()) {
        switch (change.kind) {
        case FolderWatch::Change::Kind::appeared:
            add(change.name);
            break;
        case FolderWatch::Change::Kind::vanished:
            remove(change.name);
            break;
        case FolderWatch::Change::Kind::unknown:
            lookThroughFolder();
            break;
        }
    }
}

void Keyboards::lookThroughFolder()
{
    std::error_code failure;
    std::set<std::string> present;
    auto entry = std::filesystem::directory_iterator(folder, failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        present.insert(entry->path().filename().string());
    }
    const auto isGone = [&present](const std::string& name) { return !present.contains(name); };
    std::erase_if(keyboards, [&](const auto& known) { return isGone(known.second.name); });
    std::erase_if(refused, isGone);
    for (const std::string& name : present) {
        add(name);
    }
}

void Keyboards::add(const std::string& name)
{
    if (!isEventDevice(name) || keyboards.size() >= kMaxKeyboards) {
        return;
    }
    const auto known = std::ranges::find_if(
        keyboards, [&name](const auto& keyboard) { return keyboard.second.name == name; });
    if (known != keyboards.end()) {
        known->second.seat.reset(); // a device is touched when it is moved to another seat
        return;
    }
    OpenedDevice opened = devices.openKeyboard(pathOf(name));
    if (opened.isRefused) {
        refused.insert(name);
        return;
    }
    refused.erase(name);
    if (opened.descriptor.isOpen() && follow(poll.get(), opened.descriptor.get(), lastNumber + 1)) {
        ++lastNumber;
        keyboards.emplace(
            lastNumber, Keyboard{.name = name, .descriptor = std::move(opened.descriptor)});
    }
}

void Keyboards::remove(const std::string& name)
{
    refused.erase(name);
    std::erase_if(
        keyboards, [&name](const auto& keyboard) { return keyboard.second.name == name; });
}

} // namespace quillbrook
