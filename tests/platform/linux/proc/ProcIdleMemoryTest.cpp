#include "platform/linux/proc/ProcIdleMemory.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <fstream>
#include <numeric>
#include <string>
#include <string_view>

namespace quillbrook {
namespace {

constexpr std::size_t kBytes = 1 << 20;

/// A file of ones in memory, all of it read once.
class ReadFile {
public:
    explicit ReadFile(const std::filesystem::path& path) : path(path)
    {
        std::ofstream(path) << std::string(kBytes, '\1');
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        memory = mmap(nullptr, kBytes, PROT_READ, MAP_PRIVATE, file, 0);
        close(file);
        sum();
    }
    ~ReadFile() { munmap(memory, kBytes); }

    ReadFile(const ReadFile&) = delete;
    ReadFile& operator=(const ReadFile&) = delete;

    std::size_t sum() const
    {
        const std::string_view text(static_cast<const char*>(memory), kBytes);
        return std::accumulate(text.begin(), text.end(), std::size_t{0});
    }

    /// How much of it the process holds in memory.
    std::size_t residentBytes() const
    {
        std::ifstream mappings("/proc/self/smaps");
        std::string line;
        while (std::getline(mappings, line) && !line.ends_with(path.string())) {}
        while (std::getline(mappings, line) && !line.starts_with("Rss:")) {}
        return line.starts_with("Rss:") ? std::stoul(line.substr(4)) * 1024 : kBytes * 2;
    }

private:
    std::filesystem::path path;
    void* memory = nullptr;
};

TEST(ProcIdleMemory, DropsThePagesOfFontsWhichStayReadable)
{
    const TemporaryDirectory directory;
    const ReadFile font(directory.path() / "a.ttc");
    ASSERT_EQ(font.residentBytes(), kBytes);
    ProcIdleMemory().giveBack();
    EXPECT_EQ(font.residentBytes(), 0U);
    EXPECT_EQ(font.sum(), kBytes);
}

TEST(ProcIdleMemory, LeavesOtherFilesAlone)
{
    const TemporaryDirectory directory;
    const ReadFile library(directory.path() / "a.so");
    ProcIdleMemory().giveBack();
    EXPECT_EQ(library.residentBytes(), kBytes);
}

} // namespace
} // namespace quillbrook
