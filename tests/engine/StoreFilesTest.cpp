#include "engine/StoreFiles.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using enum StoreFilesState;

class StoreFilesTest : public testing::Test {
protected:
    StoreFilesTest()
    {
        write("monitor.db", "store");
        write("monitor.db-wal", "log");
        write("monitor.db-shm", "index");
        files.remember(file("monitor.db"));
    }

    fs::path file(const std::string& name) const { return directory.path() / name; }

    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(file(name)) << text;
    }

    TemporaryDirectory directory{};
    StoreFiles files{};
};

TEST_F(StoreFilesTest, AreUntouchedAsLongAsNobodyWrites)
{
    EXPECT_EQ(files.look(), untouched);
    write("monitor.db-wal", "a longer log"); // others may add to it
    EXPECT_EQ(files.look(), untouched);
}

TEST_F(StoreFilesTest, AreTouchedWhenTheStoreIsWrittenToOrTheLogGetsShorter)
{
    write("monitor.db", "another size");
    EXPECT_EQ(files.look(), touched);
    files.noteOwnWrite();
    EXPECT_EQ(files.look(), untouched);
    fs::last_write_time(file("monitor.db"), fs::file_time_type{});
    EXPECT_EQ(files.look(), touched);
    files.noteOwnWrite();
    fs::resize_file(file("monitor.db-wal"), 1);
    EXPECT_EQ(files.look(), touched);
}

TEST_F(StoreFilesTest, ANewFileInTheSamePlaceIsAnother)
{
    write("new", "store");
    fs::rename(file("new"), file("monitor.db"));
    EXPECT_EQ(files.look(), replaced);
    files.noteOwnWrite(); // not ours
    EXPECT_EQ(files.look(), replaced);
    fs::remove(file("monitor.db"));
    EXPECT_EQ(files.look(), gone);
    files.forget();
    EXPECT_EQ(files.look(), untouched);
}

TEST_F(StoreFilesTest, ALogIsLostOnceItWasSeen)
{
    fs::remove(file("monitor.db-shm"));
    EXPECT_EQ(files.look(), logLost);
    files.remember(file("monitor.db"));
    EXPECT_EQ(files.look(), untouched); // a store without an index, to begin with
    write("monitor.db-shm", "index");
    files.noteOwnWrite();
    fs::remove(file("monitor.db-shm"));
    EXPECT_EQ(files.look(), logLost);
}

TEST_F(StoreFilesTest, RestsOfALostStoreAreRemovedButNotThoseOfAnother)
{
    fs::remove(file("monitor.db"));
    write("new", "log of the new one");
    fs::rename(file("new"), file("monitor.db-wal"));
    files.removeRests();
    EXPECT_TRUE(fs::exists(file("monitor.db-wal")));
    EXPECT_FALSE(fs::exists(file("monitor.db-shm")));
}

TEST_F(StoreFilesTest, AreSetAsideTogetherUnderTheDateOfUtc8)
{
    const auto kept = files.setAside(1767225599.9);
    ASSERT_TRUE(kept);
    EXPECT_EQ(*kept, file("monitor-damaged-20260101-075959.db"));
    EXPECT_TRUE(fs::exists(file("monitor-damaged-20260101-075959.db-wal")));
    EXPECT_FALSE(fs::exists(file("monitor.db")));
    EXPECT_FALSE(fs::exists(file("monitor.db-shm")));
}

TEST_F(StoreFilesTest, WithoutAFolderNothingIsSetAside)
{
    fs::remove_all(directory.path());
    EXPECT_FALSE(files.setAside(0));
}

} // namespace
} // namespace quillbrook
