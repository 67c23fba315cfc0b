#include "platform/linux/surroundings/WritableDirectory.h"

#include "base/OlderThread.h"
#include "base/Text.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

std::error_code lastFault()
{
    return {errno, std::generic_category()};
}

/// Writes a little into a file without a name, which goes with its descriptor: only that finds a
/// disk that is full.
std::error_code trialFault(const fs::path& directory)
{
    const int file = open(directory.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file < 0) {
        const bool knowsNoSuchFiles = errno == EOPNOTSUPP || errno == EISDIR || errno == ENOENT;
        if (knowsNoSuchFiles && access(directory.c_str(), W_OK | X_OK) == 0) {
            return {};
        }
        return lastFault();
    }
    constexpr std::array<char, 4096> kPage{};
    const auto written = write(file, kPage.data(), kPage.size());
    const auto fault = written < 0 ? lastFault() : std::error_code();
    close(file);
    return fault;
}

void tellFault(std::string_view what, const fs::path& directory, std::string_view loss)
{
    std::error_code fault;
    onOlderThread([&] { fault = writingFault(directory); });
    if (fault) {
        notice(filled("{}不能写入（{}），{}: {}",
            {what, fault.message(), loss, outsideName(directory.string())}));
    }
}

} // namespace

std::error_code writingFault(fs::path directory)
{
    while (true) {
        std::error_code failure;
        const auto status = fs::status(directory, failure);
        if (fs::is_directory(status)) {
            return trialFault(directory);
        }
        if (fs::exists(status)) {
            return std::make_error_code(std::errc::not_a_directory);
        }
        if (status.type() != fs::file_type::not_found || !directory.has_relative_path()) {
            return failure;
        }
        directory = directory.parent_path();
    }
}

void tellWritingFaults(const fs::path& dataDirectory, const fs::path& settingsDirectory)
{
    tellFault("数据目录", dataDirectory, "不能记录");
    tellFault("设置目录", settingsDirectory, "不能保存设置");
}

} // namespace quillbrook
