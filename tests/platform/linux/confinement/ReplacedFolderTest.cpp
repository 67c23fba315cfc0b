#include "platform/linux/confinement/ReplacedFolder.h"
#include "base/Sqlite.h"
#include "engine/LogFile.h"
#include "support/Bound.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

/// A bound process whose folder is replaced by one that nobody has told the kernel of.
class ReplacedFolderTest : public testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directory(folder);
        if (!canRefuseWriting()) {
            GTEST_SKIP() << "the kernel has no Landlock";
        }
    }

    void replaceFolder() const
    {
        onOlderThread([this] {
            fs::remove_all(folder);
            fs::create_directory(folder);
        });
    }

    /// What SQLite says of a row that is written to a store of that path in the bound process.
    int resultOfWriting(const fs::path& store) const
    {
        return inBoundChild(folder, [&] {
            openStoresInReplaced(folder);
            replaceFolder();
            const OpenedConnection opened
                = openConnection(store.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            if (opened.result != SQLITE_OK) {
                return opened.result;
            }
            return sqlite3_exec(opened.connection.get(),
                "PRAGMA journal_mode=WAL; CREATE TABLE t (a); INSERT INTO t VALUES (7)", nullptr,
                nullptr, nullptr);
        });
    }

    const TemporaryDirectory directory{};
    const fs::path folder = directory.path() / "folder";
};

TEST_F(ReplacedFolderTest, StoresAreMadeInTheNewFolder)
{
    EXPECT_EQ(resultOfWriting(folder / "store.db"), SQLITE_OK);
    EXPECT_EQ(StoreReader(folder / "store.db").value("SELECT a FROM t"), "7");
    // The last connection has removed the log: only then it went through.
    EXPECT_FALSE(fs::exists(folder / "store.db-wal"));
}

TEST_F(ReplacedFolderTest, AFolderBehindALinkIsTheSame)
{
    fs::create_directory_symlink(directory.path(), directory.path() / "link");
    EXPECT_EQ(resultOfWriting(directory.path() / "link" / "folder" / "store.db"), SQLITE_OK);
}

TEST_F(ReplacedFolderTest, TheLogGoesOnInTheNewFolder)
{
    EXPECT_EQ(inBoundChild(folder,
                  [this] {
                      LogFile log;
                      log.open(folder / "a.log");
                      log.append("one\n");
                      replaceFolder();
                      log.append("two\n");
                      return 0;
                  }),
        0);
    std::ifstream stream(folder / "a.log");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "two\n");
}

TEST_F(ReplacedFolderTest, StoresElsewhereAreRefused)
{
    EXPECT_EQ(resultOfWriting(directory.path() / "store.db"), SQLITE_CANTOPEN);
    EXPECT_EQ(resultOfWriting(directory.path() / "folder-2.db"), SQLITE_CANTOPEN);
}

} // namespace
} // namespace quillbrook
