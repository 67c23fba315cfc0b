#include "base/Sqlite.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>

namespace quillbrook {
namespace {

TEST(OpenConnection, TellsWhyAFileCantBeOpened)
{
    const TemporaryDirectory directory;
    const auto opened = openConnection(directory.path().string(), SQLITE_OPEN_READWRITE);
    EXPECT_EQ(opened.result, SQLITE_CANTOPEN);
    EXPECT_STREQ(sqlite3_errmsg(opened.connection.get()), "unable to open database file");
}

TEST(Prepare, IsEmptyForWhatIsNoStatement)
{
    const auto opened = openConnection(":memory:", SQLITE_OPEN_READWRITE);
    EXPECT_FALSE(prepare(opened.connection.get(), "SELEKT 1"));
    EXPECT_FALSE(prepare(nullptr, "SELECT 1"));
}

TEST(ColumnText, HoldsAllBytesAndIsEmptyForNull)
{
    const auto opened = openConnection(":memory:", SQLITE_OPEN_READWRITE);
    const Statement statement
        = prepare(opened.connection.get(), "SELECT '汉' || char(0) || 'b', NULL");
    ASSERT_EQ(sqlite3_step(statement.get()), SQLITE_ROW);
    EXPECT_EQ(columnText(statement, 0), std::string("汉\0b", 5));
    EXPECT_TRUE(columnText(statement, 1).empty());
}

} // namespace
} // namespace quillbrook
