// What only the SQLite store has: the file itself, WAL, and files of older servers.
#include "SqliteHiscoreStore.h"

#include "ServerHarness.h"

using namespace tolva::hiscored;
using tolva::testing::TempFolder;
using tolva::testing::hiscored::Query;

TEST(SqliteStore, KeepsTheStatisticsInAWalFileAndReadsThePageFromTheIndex) {
    TempFolder folder;
    const std::string path = folder / "hiscores.sqlite";
    std::string error;
    auto store = SqliteHiscoreStore::Open(path, error);
    ASSERT_TRUE(store) << error;
    Submission submission;
    submission.Places.push_back({0, {"ACE", 3, 300}});
    submission.Places.push_back({2, {"BOB", 2, 20}});
    submission.HasStat = true;
    submission.Stat = "[LEVEL1]\r\n\xFF";
    ASSERT_EQ(store->Add(submission, {"2024-01-01 00:00:00", 0, "10.0.0.1", 0}), AddResult::Stored);
    submission.HasStat = false;
    ASSERT_EQ(store->Add(submission, {"2024-01-01 00:00:01", 0, "10.0.0.2", 0}), AddResult::Stored);
    EXPECT_EQ(Query(path, "PRAGMA journal_mode"), "wal");
    EXPECT_EQ(Query(path, "SELECT stat FROM submission WHERE sender = '10.0.0.1'"), "[LEVEL1]\r\n\xFF");
    EXPECT_EQ(Query(path, "SELECT count(*) || '' FROM submission WHERE stat IS NULL"), "1");
    EXPECT_EQ(Query(path, "SELECT group_concat(place) FROM (SELECT place FROM entry ORDER BY place)"), "0,2");
    // The page walks the index and sorts nothing.
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* explain = nullptr;
    sqlite3_prepare_v2(db,
                       "EXPLAIN QUERY PLAN SELECT name, level, score, received FROM entry "
                       "ORDER BY score DESC, level DESC, received, name LIMIT 100",
                       -1, &explain, nullptr);
    std::string details;
    while (sqlite3_step(explain) == SQLITE_ROW) details += reinterpret_cast<const char*>(sqlite3_column_text(explain, 3));
    sqlite3_finalize(explain);
    sqlite3_close(db);
    EXPECT_NE(details.find("entry_by_rank"), std::string::npos) << details;
    EXPECT_EQ(details.find("TEMP B-TREE"), std::string::npos) << details;
}

TEST(SqliteStore, BringsAnOlderServersFileUpToOneRowPerEntry) {
    TempFolder folder;
    const std::string path = folder / "old.sqlite";
    Query(path, R"sql(
        CREATE TABLE submission (id INTEGER PRIMARY KEY, received TEXT NOT NULL, sender TEXT NOT NULL, stat BLOB);
        CREATE TABLE entry (id INTEGER PRIMARY KEY, submission INTEGER NOT NULL REFERENCES submission(id),
                            place INTEGER NOT NULL, name BLOB NOT NULL, level INTEGER NOT NULL, score REAL NOT NULL);
        CREATE INDEX entry_by_score ON entry(score DESC, level DESC, name);
        INSERT INTO submission VALUES (1, '2024-01-02 00:00:00', 'a', NULL), (2, '2024-01-01 00:00:00', 'b', NULL);
        INSERT INTO entry VALUES (1, 1, 0, 'AAA', 5, 900), (2, 2, 0, 'AAA', 5, 900), (3, 1, 1, 'BBB', 2, 10);
        PRAGMA user_version = 1;
    )sql");
    std::string error;
    auto store = SqliteHiscoreStore::Open(path, error);
    ASSERT_TRUE(store) << error;
    const auto best = store->Best(100);
    ASSERT_TRUE(best);
    ASSERT_EQ(best->size(), 2u);
    EXPECT_EQ((*best)[0], (StoredEntry{"AAA", 5, 900, "2024-01-01 00:00:00"}));
    EXPECT_EQ((*best)[1], (StoredEntry{"BBB", 2, 10, "2024-01-02 00:00:00"}));
    EXPECT_EQ(Query(path, "PRAGMA user_version"), "2");
}

TEST(SqliteStore, SaysWhyAFileCannotBeUsed) {
    TempFolder folder;
    folder.Write("notes.txt", std::string(4096, 'x'));
    std::string error;
    EXPECT_FALSE(SqliteHiscoreStore::Open(folder / "notes.txt", error));
    EXPECT_NE(error.find("notes.txt"), std::string::npos) << error;
    EXPECT_FALSE(SqliteHiscoreStore::Open(folder / "no/such/folder/db.sqlite", error));
    EXPECT_NE(error.find("cannot open"), std::string::npos) << error;
    Query(folder / "new.sqlite", "PRAGMA user_version = 9");
    EXPECT_FALSE(SqliteHiscoreStore::Open(folder / "new.sqlite", error));
    EXPECT_NE(error.find("newer server"), std::string::npos) << error;
}
