#include "SqliteSchema.h"

#include <sqlite3.h>

namespace tolva::hiscored {

namespace {

// 1: entries repeated in every submission that held them, ranked by a grouping query.
// 2: each entry once (the first received), ranked by an index; counts for the rate limit.
constexpr int SchemaVersion = 2;

constexpr const char* Tables = R"sql(
CREATE TABLE IF NOT EXISTS submission (
    id        INTEGER PRIMARY KEY,
    received  TEXT NOT NULL,
    sender    TEXT NOT NULL,
    stat      BLOB
);
CREATE TABLE IF NOT EXISTS entry (
    id          INTEGER PRIMARY KEY,
    submission  INTEGER NOT NULL REFERENCES submission(id),
    place       INTEGER NOT NULL,
    name        BLOB NOT NULL,
    level       INTEGER NOT NULL,
    score       REAL NOT NULL,
    received    TEXT NOT NULL,
    UNIQUE (name, level, score)
);
CREATE INDEX IF NOT EXISTS entry_by_rank ON entry(score DESC, level DESC, received, name);
CREATE TABLE IF NOT EXISTS sender_minute (
    sender  TEXT NOT NULL,
    minute  INTEGER NOT NULL,
    count   INTEGER NOT NULL,
    PRIMARY KEY (sender, minute)
);
CREATE INDEX IF NOT EXISTS sender_minute_by_minute ON sender_minute(minute);
)sql";

// The first schema kept a row per entry and submission; each entry now stays once,
// with the time it first came.
constexpr const char* FromVersion1 = R"sql(
DROP INDEX IF EXISTS entry_by_score;
ALTER TABLE entry RENAME TO entry_version1;
)sql";
constexpr const char* FromVersion1Copy = R"sql(
INSERT OR IGNORE INTO entry (submission, place, name, level, score, received)
SELECT e.submission, e.place, e.name, e.level, e.score, s.received
FROM entry_version1 e JOIN submission s ON s.id = e.submission
ORDER BY s.received, s.id, e.place;
DROP TABLE entry_version1;
)sql";

bool Execute(sqlite3* db, const char* sql, std::string& error) {
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return true;
    error = sqlite3_errmsg(db);
    return false;
}

// One value of a PRAGMA, or none.
bool Pragma(sqlite3* db, const char* sql, std::string& value, std::string& error) {
    sqlite3_stmt* statement = nullptr;
    bool ok = sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) == SQLITE_OK &&
              sqlite3_step(statement) == SQLITE_ROW;
    if (ok) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        value = text ? text : "";
    } else {
        error = sqlite3_errmsg(db);
    }
    sqlite3_finalize(statement);
    return ok;
}

bool MakeTables(sqlite3* db, int found, std::string& error) {
    if (!Execute(db, "BEGIN IMMEDIATE", error)) return false;
    const bool made = (found != 1 || Execute(db, FromVersion1, error)) && Execute(db, Tables, error) &&
                      (found != 1 || Execute(db, FromVersion1Copy, error)) &&
                      Execute(db, ("PRAGMA user_version = " + std::to_string(SchemaVersion)).c_str(), error) &&
                      Execute(db, "COMMIT", error);
    if (!made) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    return made;
}

} // namespace

bool MakeSqliteSchema(sqlite3* db, std::string& error) {
    // WAL must be asked for and confirmed: a file on a system without shared memory
    // stays in its old mode, and readers would then wait for writers.
    std::string mode;
    if (!Pragma(db, "PRAGMA journal_mode = WAL", mode, error)) return false;
    if (mode != "wal") {
        error = "the database will not go into WAL mode (it stays in '" + mode + "')";
        return false;
    }
    std::string version;
    if (!Pragma(db, "PRAGMA user_version", version, error)) return false;
    const int found = std::stoi(version);
    if (found > SchemaVersion) {
        error = "it was made by a newer server (schema " + version + ")";
        return false;
    }
    return found == SchemaVersion || MakeTables(db, found, error);
}

} // namespace tolva::hiscored
