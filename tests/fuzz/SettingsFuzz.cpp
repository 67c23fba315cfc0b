#include "platform/qt/QtUserDefaults.h"
#include "shell/model/StoredFrame.h"
#include "tests/fuzz/FuzzInput.h"

#include <QSettings>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace quillbrook {
namespace {

/// The file of the settings, in a folder of its own.
class SettingsFile {
public:
    SettingsFile()
    {
        require(mkdtemp(folder.data()) != nullptr);
        path = folder + "/tarnlow.cn/quillbrook.conf";
        std::filesystem::create_directory(folder + "/tarnlow.cn");
        QSettings::setPath(
            QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder));
        write("[General]\nbirthYear=1988\n");
        require(QtUserDefaults().integerForKey("birthYear") == 1988); // what is written is read
    }

    ~SettingsFile()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    void write(std::string_view text) const
    {
        // Qt looks at size and date to see whether it knows the file already.
        std::filesystem::remove(path);
        QtUserDefaults().boolForKey("none");
        std::ofstream(path, std::ios::binary) << text;
    }

private:
    std::string folder = std::filesystem::temp_directory_path() / "quillbrook-fuzz-XXXXXX";
    std::string path{};
};

} // namespace
} // namespace quillbrook

/// Whatever the file of the settings holds, each of them reads as something of its type.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    static const SettingsFile file;
    file.write({reinterpret_cast<const char*>(data), size});
    QtUserDefaults defaults;
    for (const auto* key : {"birthYear", "hasLaunchedBefore", "lastLaunchedVersion",
             "lastRecordedBootTime", "DashboardWindow-v2"}) {
        defaults.boolForKey(key);
        defaults.integerForKey(key);
        defaults.doubleForKey(key);
        const std::string text = defaults.stringForKey(key);
        requireValid(text);
        if (const auto frame = storedFrame(text)) {
            require(frame->x + frame->width > frame->x && frame->y + frame->height > frame->y);
        }
    }
    return 0;
}
