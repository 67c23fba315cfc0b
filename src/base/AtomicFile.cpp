#include "base/AtomicFile.h"

#include "base/OlderThread.h"

#include <fstream>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

bool replaceFile(const fs::path& path, std::string_view text)
{
    fs::path draft = path;
    draft += ".new";
    bool isWritten = false;
    {
        std::ofstream stream(draft, std::ios::binary | std::ios::trunc);
        stream << text;
        stream.close();
        isWritten = stream.good();
    }
    std::error_code failure;
    if (isWritten) {
        fs::rename(draft, path, failure);
    }
    if (isWritten && !failure) {
        return true;
    }
    fs::remove(draft, failure);
    return false;
}

} // namespace

bool writeAtomically(const fs::path& path, std::string_view text)
{
    bool isWritten = false;
    onOlderThread([&] { isWritten = replaceFile(path, text); });
    return isWritten;
}

} // namespace quillbrook
