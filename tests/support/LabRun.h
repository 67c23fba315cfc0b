#pragma once

#include "support/TemporaryDirectory.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace quillbrook {

/// What a run of quillbrook-lab left.
struct LabResult {
    int status = 0;
    std::string output{};
    std::string errors{};
};

/// Runs of the real quillbrook-lab, whose path is `QUILLBROOK_LAB`, in a directory of their own.
class LabRun {
public:
    /// The path of a file in the directory, fit for a shell.
    std::string path(const std::string& name) const { return (directory.path() / name).string(); }

    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
    }

    std::string read(const std::string& name) const
    {
        std::ifstream stream(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// Runs the program with a shell's arguments.
    LabResult run(const std::string& arguments) const
    {
        const std::string command = std::string(QUILLBROOK_LAB) + " " + arguments + " >"
            + path("stdout") + " 2>" + path("stderr");
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("stdout"), read("stderr")};
    }

private:
    TemporaryDirectory directory{};
};

} // namespace quillbrook
