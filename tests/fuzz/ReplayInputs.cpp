#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Hands each file of a folder to a fuzz target, without a fuzzer. The name of the one that it ends
/// at, if it does, stands last on standard error.
int main(int argc, char** argv)
{
    if (argc != 2) {
        return 2;
    }
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    for (const auto& path : paths) {
        std::fprintf(stderr, "%s\n", path.filename().c_str());
        std::ifstream stream(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs\n", paths.size());
    return paths.empty() ? 1 : 0;
}
