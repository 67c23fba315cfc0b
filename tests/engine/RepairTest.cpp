#include "support/EngineFixture.h"

#include <random>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The statement whose rows the start-up repair must remove, as it was first written. It pairs
/// every row with every later one of the same application.
constexpr const char* kPairwiseRemoval = R"(
        DELETE FROM app_sessions WHERE id IN (
            SELECT s2.id FROM app_sessions s1
            JOIN app_sessions s2 ON s1.app_name = s2.app_name AND s1.id < s2.id
            WHERE ABS(s1.started_at - s2.started_at) < 5
        ))";

/// What a start does to the rows that the run before left behind.
class RepairTest : public EngineFixture {
protected:
    RepairTest()
    {
        start();
        stop();
    }

    void add(const std::string& values) const
    {
        store().exec(
            "INSERT INTO app_sessions (id, app_name, started_at, ended_at) VALUES " + values);
    }

    std::vector<std::string> ids() const
    {
        return store().rows("SELECT id FROM app_sessions ORDER BY id");
    }
};

TEST_F(RepairTest, AnOpenSessionEndsWhereTheNextOneInTimeBegan)
{
    add("(1, 'A', 1000, NULL), (2, 'B', 1500, 1600), (3, 'A', 1200.5, 1300)");
    start();
    EXPECT_THAT(
        store().rows("SELECT app_name, ended_at, duration_sec FROM app_sessions WHERE id = 1"),
        ElementsAre("A|1200.5|200.5"));
}

TEST_F(RepairTest, TheNewestOpenSessionStaysOpen)
{
    add("(1, 'A', 1000, NULL), (2, 'B', 2000, NULL)");
    start();
    EXPECT_THAT(store().rows("SELECT id, ended_at FROM app_sessions ORDER BY id"),
        ElementsAre("1|2000.0", "2|NULL"));
    stop(); // another start, with nothing later, leaves it open still
    start();
    EXPECT_EQ(store().value("SELECT ended_at FROM app_sessions WHERE id = 2"), "NULL");
}

TEST_F(RepairTest, AnOpenSessionIsClosedAtTheStartAfterTheSessionThatFollowed)
{
    startWorkingIn("Editor");
    crash();
    startWorkingIn("Mail"); // the row has no later one at this start
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1", "Mail|120|NULL|1"));
    crash();
    start();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|120|1", "Mail|120|NULL|1"));
}

TEST_F(RepairTest, SessionsThatBeganTogetherHaveNoLaterRow)
{
    add("(1, 'A', 1000, NULL), (2, 'B', 1000, NULL)");
    start();
    EXPECT_THAT(store().rows("SELECT ended_at FROM app_sessions"), ElementsAre("NULL", "NULL"));
}

TEST_F(RepairTest, OfTwoRowsLessThanFiveSecondsApartTheLargerIdGoes)
{
    add("(1, 'A', 1000, 1100), (2, 'A', 1004.9, 1200), (3, 'B', 1001, 1100)");
    start();
    EXPECT_THAT(ids(), ElementsAre("1", "3"));
}

TEST_F(RepairTest, TheLargerIdGoesAlsoWhenItBeganFirst)
{
    add("(1, 'A', 1004.9, 1100), (2, 'A', 1000, 1200)");
    start();
    EXPECT_THAT(ids(), ElementsAre("1"));
}

TEST_F(RepairTest, RowsFiveSecondsApartStay)
{
    add("(1, 'A', 1000, 1100), (2, 'A', 1005, 1200), (3, 'A', 995, 1200)");
    start();
    EXPECT_THAT(ids(), ElementsAre("1", "2", "3"));
}

TEST_F(RepairTest, ARowGoesEvenWhenTheOneThatCondemnsItGoesItself)
{
    add("(1, 'A', 1000, 1100), (2, 'A', 1004, 1200), (3, 'A', 1008, 1200)");
    start();
    EXPECT_THAT(ids(), ElementsAre("1"));
}

TEST_F(RepairTest, OpenIdlePeriodsEndAtTheStartAsProcessExit)
{
    startWorkingIn("Editor");
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    machine.runFor(10);
    crash();
    machine.runFor(5000);
    start();
    EXPECT_THAT(idlePeriods(), ElementsAre("61|5070|4"));
    EXPECT_EQ(store().value("SELECT duration_sec FROM idle_periods"), "5009.0");
}

TEST_F(RepairTest, FinishedIdlePeriodsStayAsTheyAre)
{
    store().exec("INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type) "
                 "VALUES (1000, 1010, 10, 2)");
    start();
    EXPECT_THAT(store().rows("SELECT * FROM idle_periods"), ElementsAre("1|1000.0|1010.0|10.0|2"));
}

TEST_F(RepairTest, RemovesExactlyTheRowsOfThePairwiseStatement)
{
    std::mt19937 random(20260101);
    const auto pick = [&](std::size_t count) { return random() % count; };
    // Distances around the border of 5 seconds, in the rounding that large times bring.
    const std::vector<std::string> steps = {"0", "1", "2.5", "4.9", "4.9999995", "4.99999999", "5",
        "5.0000001", "5.00000001", "6", "6.5", "30", "-3", "-5", "-5.5"};
    const std::vector<std::string> bases
        = {"0", "1000.1", "1767225600.3", "-40", "1e15", "9e15", "3.6e16", "9e18"};
    const std::vector<std::string> oddities
        = {"'abc'", "'12'", "'3x'", "x'31'", "''", "9e999", "-9e999", "4"};
    int id = 0;
    // Some rows in a row with names of their own, so that groups don't see each other.
    const auto group = [&](int number) {
        std::string values;
        const std::size_t count = 2 + pick(12);
        std::string at = bases[pick(bases.size())];
        for (std::size_t i = 0; i < count; ++i) {
            at = pick(40) == 0 ? bases[pick(bases.size())] : at + "+" + steps[pick(steps.size())];
            const std::string startedAt
                = number % 5 == 0 && pick(4) == 0 ? oddities[pick(oddities.size())] : at;
            const std::string name = static_cast<char>('A' + pick(3)) + std::to_string(number);
            values += std::string(values.empty() ? "" : ", ") + "(" + std::to_string(++id) + ", '"
                + name + "', " + startedAt + ", 1)";
        }
        return values;
    };
    for (int round = 0; round < 100; ++round) {
        const StoreReader quoted(":memory:");
        const StoreReader ours = store();
        ours.exec("DELETE FROM app_sessions");
        std::string values = group(30 * round);
        for (int i = 1; i < 30; ++i) {
            values += ", " + group(30 * round + i);
        }
        const std::string insert
            = "INSERT INTO app_sessions (id, app_name, started_at, ended_at) VALUES " + values;
        quoted.exec("CREATE TABLE app_sessions (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                    "app_name TEXT NOT NULL, started_at REAL NOT NULL, ended_at REAL)");
        quoted.exec(insert);
        quoted.exec(kPairwiseRemoval);
        ours.exec(insert);
        testing::internal::CaptureStdout();
        start();
        stop();
        testing::internal::GetCapturedStdout();
        ASSERT_EQ(ids(), quoted.rows("SELECT id FROM app_sessions ORDER BY id")) << values;
    }
    EXPECT_THAT(logText(), Not(HasSubstr("⚠️")));
}

} // namespace
} // namespace quillbrook
