#include "support/EngineFixture.h"

#include <sqlite3.h>

#include <cstdint>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

class GrowthTest : public EngineFixture {
protected:
    static constexpr std::uintmax_t kMostWalBytes = 5'000'000; // 1000 pages and what they carry

    void switchOften(int count)
    {
        for (int i = 0; i < count; ++i) {
            bringToFront(i % 2 == 0 ? "Mail" : "Editor");
            machine.humanInput.happenNow();
            machine.runFor(3);
        }
    }

    std::uintmax_t walBytes() const { return fs::file_size(file("monitor.db-wal")); }
};

TEST_F(GrowthTest, TheWriteAheadLogStaysSmall)
{
    startWorkingIn("Editor");
    switchOften(2000);
    EXPECT_LT(walBytes(), kMostWalBytes);
}

TEST_F(GrowthTest, TheWriteAheadLogIsCutWhenALongTransactionOfAnotherProgramEnds)
{
    startWorkingIn("Editor");
    {
        const auto reader = openConnection(file("monitor.db").string(), SQLITE_OPEN_READONLY);
        ASSERT_EQ(sqlite3_exec(reader.connection.get(), "BEGIN; SELECT COUNT(*) FROM app_sessions",
                      nullptr, nullptr, nullptr),
            SQLITE_OK);
        switchOften(1000);
        EXPECT_GT(walBytes(), kMostWalBytes);
    }
    switchOften(2);
    EXPECT_LT(walBytes(), kMostWalBytes);
}

} // namespace
} // namespace quillbrook
