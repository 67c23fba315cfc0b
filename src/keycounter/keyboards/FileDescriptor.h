#pragma once

#include <unistd.h>

#include <utility>

namespace quillbrook {

/// An open file, closed at its end.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number(number) {}
    ~FileDescriptor()
    {
        if (isOpen()) {
            close(number);
        }
    }

    FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

private:
    int number = -1;
};

} // namespace quillbrook
