#include "support/TemporaryDirectory.h"

#include "base/Fatal.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory()
{
    std::string name = (fs::temp_directory_path() / "quillbrook-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        fatal("no temporary directory can be made");
    }
    directory = name;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    fs::permissions(directory, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(directory, ignored);
}

} // namespace quillbrook
