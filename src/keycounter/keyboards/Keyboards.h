#pragma once

#include "keycounter/keyboards/FileDescriptor.h"
#include "keycounter/keyboards/FolderWatch.h"
#include "keycounter/keyboards/KeyDowns.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace quillbrook {

class InputDevices;

/// All keyboards under a folder, those plugged in later too. Nothing runs while no key is pressed.
class Keyboards {
public:
    /// `devices` outlives the keyboards.
    Keyboards(std::string folder, InputDevices& devices);

    Keyboards(const Keyboards&) = delete;
    Keyboards& operator=(const Keyboards&) = delete;

    /// Becomes readable when there is something to take.
    int descriptor() const { return poll.get(); }

    /// How many keys went down since the last time, by seat. Looks after keyboards that came or
    /// went, too. Of a flood it takes a part and leaves the descriptor readable.
    std::map<std::string, std::uint64_t> takeKeyDowns();

    /// Whether there are keyboards, and no device that may not be read: it could be one.
    bool areAllReadable() const { return !keyboards.empty() && refused.empty(); }

private:
    struct Keyboard {
        std::string name;
        FileDescriptor descriptor;
        KeyDowns keyDowns{};
        std::optional<std::string> seat{}; // once known
    };

    void lookThroughFolder();
    void followFolder();
    void add(const std::string& name);
    void remove(const std::string& name);
    bool readFrom(Keyboard& keyboard, std::map<std::string, std::uint64_t>& keyDowns);
    std::string pathOf(const std::string& name) const { return folder + "/" + name; }

    std::string folder;
    InputDevices& devices;
    FileDescriptor poll;
    FolderWatch watch;
    std::map<std::uint64_t, Keyboard> keyboards{}; // by a number of our own, from 1 on
    std::uint64_t lastNumber = 0;
    std::set<std::string> refused{};
};

} // namespace quillbrook
