#pragma once

#include "keycounter/keyboards/InputDevices.h"
#include "keycounter/keyboards/Seats.h"
#include "support/TemporaryDirectory.h"
#include "tests/keycounter/InputEvents.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace quillbrook {

/// Pipes in a folder that stand for event devices.
class PipeDevices final : public InputDevices {
public:
    OpenedDevice openKeyboard(const std::string& path) override
    {
        ++openings[nameOf(path)];
        if (refused.contains(nameOf(path))) {
            return {.isRefused = true};
        }
        if (!std::filesystem::is_fifo(path)) {
            return {};
        }
        return {
            .descriptor = FileDescriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))};
    }

    std::optional<std::string> seatOf(const std::string& path) override
    {
        const auto found = seats.find(nameOf(path));
        return found == seats.end() ? kFirstSeat : found->second;
    }

    std::set<std::string> refused{};
    std::map<std::string, std::optional<std::string>> seats{}; // where not the first
    std::map<std::string, int> openings{};

private:
    static std::string nameOf(const std::string& path)
    {
        return std::filesystem::path(path).filename().string();
    }
};

/// The keys' end of a pipe in a folder.
class PipeKeyboard {
public:
    explicit PipeKeyboard(std::filesystem::path path) : path(std::move(path))
    {
        EXPECT_EQ(mkfifo(this->path.c_str(), 0600), 0);
    }
    ~PipeKeyboard() { vanish(); }

    PipeKeyboard(const PipeKeyboard&) = delete;
    PipeKeyboard& operator=(const PipeKeyboard&) = delete;

    /// Lets the reader read these bytes; it must have opened the device.
    void write(const Bytes& bytes)
    {
        if (!end.isOpen()) {
            end = FileDescriptor(open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
            fcntl(end.get(), F_SETPIPE_SZ, 1024 * 1024);
        }
        EXPECT_EQ(
            ::write(end.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    /// Whether nobody reads it any more.
    bool isLeft() const
    {
        pollfd one{.fd = end.get(), .events = 0, .revents = 0};
        return poll(&one, 1, 0) == 1 && (one.revents & POLLERR) != 0;
    }

    /// Ends the stream of its events.
    void hangUp() { end = {}; }

    /// As a keyboard that is pulled out.
    void vanish()
    {
        hangUp();
        std::filesystem::remove(path);
    }

private:
    std::filesystem::path path;
    FileDescriptor end{};
};

/// Seats that a test fills.
class TestSeats final : public Seats {
public:
    std::optional<uid_t> activeUser(const std::string& seat) const override
    {
        const auto found = active.find(seat);
        return found == active.end() ? std::nullopt : std::optional(found->second);
    }
    bool isActive(uid_t user) const override
    {
        for (const auto& [seat, activeOne] : active) {
            if (activeOne == user) {
                return true;
            }
        }
        return false;
    }
    bool isPresent(uid_t user) const override { return isActive(user); }
    bool areKnown() const override { return isKept; }

    std::map<std::string, uid_t> active{};
    bool isKept = true;
};

} // namespace quillbrook
