#pragma once

#include <filesystem>

namespace quillbrook {

/// A fresh directory that goes with its contents.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return directory; }

private:
    std::filesystem::path directory;
};

} // namespace quillbrook
