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

TEST(ColumnNumber, IsThatOfTheLastColumnOfTheName)
{
    const auto opened = openConnection(":memory:", SQLITE_OPEN_READWRITE);
    const Statement statement = prepare(opened.connection.get(), "SELECT 1 a, 2 b, 3 a");
    EXPECT_EQ(columnNumber(statement, "a"), 2);
    EXPECT_EQ(columnNumber(statement, "b"), 1);
    EXPECT_EQ(columnNumber(statement, "c"), -1);
    EXPECT_EQ(columnNumber(Statement(), "a"), -1);
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

TEST(StoredText, EndsAtANulAndMayBeEmpty)
{
    const auto opened = openConnection(":memory:", SQLITE_OPEN_READWRITE);
    const Statement statement = prepare(opened.connection.get(),
        "SELECT '汉' || char(0) || 'b', '', char(0), CAST(x'ff41' AS TEXT)");
    ASSERT_EQ(sqlite3_step(statement.get()), SQLITE_ROW);
    EXPECT_EQ(storedText(sqlite3_column_value(statement.get(), 0)), "汉");
    EXPECT_EQ(storedText(sqlite3_column_value(statement.get(), 1)), "");
    EXPECT_EQ(storedText(sqlite3_column_value(statement.get(), 2)), "");
    EXPECT_EQ(storedText(sqlite3_column_value(statement.get(), 3)), "\xFF\x41");
}

TEST(StoredText, IsUtf8WhateverTheFileHolds)
{
    for (const char* encoding : {"'UTF-16le'", "'UTF-16be'"}) {
        const auto opened = openConnection(":memory:", SQLITE_OPEN_READWRITE);
        sqlite3* db = opened.connection.get();
        sqlite3_exec(
            db, (std::string("PRAGMA encoding = ") + encoding).c_str(), nullptr, nullptr, nullptr);
        sqlite3_exec(db, "CREATE TABLE t (a); INSERT INTO t VALUES ('汉字 and more')", nullptr,
            nullptr, nullptr);
        const Statement statement = prepare(db, "SELECT a FROM t");
        ASSERT_EQ(sqlite3_step(statement.get()), SQLITE_ROW);
        EXPECT_EQ(storedText(sqlite3_column_value(statement.get(), 0)), "汉字 and more");
    }
}

} // namespace
} // namespace quillbrook
