#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>

namespace quillbrook {

/// A file of lines that is turned over before it grows beyond `kMostBytes`: what is in it becomes
/// the older file, beside it with ".1" behind its name, and takes the place of the one before.
///
/// No line is lost on the way, also when several processes write: each goes on in the file that it
/// has while the next can't be made, and looks before each line whether another has turned it over.
/// Nothing waits.
class LogFile {
public:
    static constexpr off_t kMostBytes = 8'000'000;

    LogFile() = default;
    ~LogFile() { close(); }

    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// Opens the file, made when missing. When it can't be opened, lines go nowhere.
    void open(const std::filesystem::path& itsPath);
    void close();

    /// Puts `line`, which has its line break, at the end. A failure is ignored.
    void append(std::string_view line);

private:
    bool isFull(std::size_t lineBytes) const;
    bool isInPlace() const;
    void turnOver();
    bool writeAll(std::string_view text);
    void openAnew();

    std::filesystem::path path{};
    int file = -1; // descriptor, -1 while none is open
    bool isLineOpen = false; // only a part of the last line could be written
};

} // namespace quillbrook
