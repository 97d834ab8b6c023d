#include "SqliteHiscoreStore.h"

#include <sqlite3.h>

namespace tolva::hiscored {

namespace {

constexpr int SchemaVersion = 1;

// The tables. A submission row holds what came with the table as a whole; its places
// are rows of their own, found for the page through the index on the score.
constexpr const char* Schema = R"sql(
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
    score       REAL NOT NULL
);
CREATE INDEX IF NOT EXISTS entry_by_score ON entry(score DESC, level DESC, name);
)sql";

// Repeated places collapse to one, which keeps the time of its first submission.
constexpr const char* BestQuery = R"sql(
SELECT e.name, e.level, e.score, MIN(s.received) AS first
FROM entry e JOIN submission s ON s.id = e.submission
GROUP BY e.score, e.level, e.name
ORDER BY e.score DESC, e.level DESC, first, e.name
LIMIT ?1
)sql";

// A statement that is reset and cleared of its bindings when the step is done with.
class Use {
public:
    explicit Use(sqlite3_stmt* statement) : statement_(statement) {}
    ~Use() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    sqlite3_stmt* operator*() const { return statement_; }

private:
    sqlite3_stmt* statement_;
};

bool StepDone(sqlite3_stmt* statement) {
    Use use(statement);
    return sqlite3_step(statement) == SQLITE_DONE;
}

} // namespace

std::unique_ptr<SqliteHiscoreStore> SqliteHiscoreStore::Open(const std::string& path, std::string& error) {
    std::unique_ptr<SqliteHiscoreStore> store(new SqliteHiscoreStore());
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(path.c_str(), &store->db_, flags, nullptr) != SQLITE_OK) {
        error = "cannot open the database '" + path + "': " +
                (store->db_ ? sqlite3_errmsg(store->db_) : "out of memory");
        return nullptr;
    }
    sqlite3_busy_timeout(store->db_, 5000);
    if (!store->Prepare(error)) {
        error = "cannot use the database '" + path + "': " + error;
        return nullptr;
    }
    return store;
}

bool SqliteHiscoreStore::Prepare(std::string& error) {
    const auto failed = [&] {
        error = sqlite3_errmsg(db_);
        return false;
    };
    const auto prepare = [&](const char* sql, sqlite3_stmt*& statement) {
        return sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) == SQLITE_OK;
    };

    // WAL must be asked for and confirmed: a file on a system without shared memory
    // stays in its old mode, and the server would then block readers behind writers.
    sqlite3_stmt* mode = nullptr;
    if (!prepare("PRAGMA journal_mode = WAL", mode)) return failed();
    const bool stepped = sqlite3_step(mode) == SQLITE_ROW;
    const std::string answer = stepped ? reinterpret_cast<const char*>(sqlite3_column_text(mode, 0)) : "";
    sqlite3_finalize(mode);
    if (!stepped) return failed();
    if (answer != "wal") {
        error = "the database will not go into WAL mode (it stays in '" + answer + "')";
        return false;
    }
    if (sqlite3_exec(db_, "PRAGMA synchronous = FULL; PRAGMA foreign_keys = ON;", nullptr, nullptr, nullptr) !=
        SQLITE_OK)
        return failed();

    sqlite3_stmt* version = nullptr;
    if (!prepare("PRAGMA user_version", version)) return failed();
    const int found = sqlite3_step(version) == SQLITE_ROW ? sqlite3_column_int(version, 0) : -1;
    sqlite3_finalize(version);
    if (found < 0) return failed();
    if (found > SchemaVersion) {
        error = "it was made by a newer server (schema " + std::to_string(found) + ")";
        return false;
    }
    if (sqlite3_exec(db_, Schema, nullptr, nullptr, nullptr) != SQLITE_OK) return failed();
    if (found < SchemaVersion &&
        sqlite3_exec(db_, ("PRAGMA user_version = " + std::to_string(SchemaVersion)).c_str(), nullptr, nullptr,
                     nullptr) != SQLITE_OK)
        return failed();

    if (!prepare("BEGIN IMMEDIATE", begin_) || !prepare("COMMIT", commit_) || !prepare("ROLLBACK", rollback_) ||
        !prepare("INSERT INTO submission (received, sender, stat) VALUES (?1, ?2, ?3)", addSubmission_) ||
        !prepare("INSERT INTO entry (submission, place, name, level, score) VALUES (?1, ?2, ?3, ?4, ?5)",
                 addEntry_))
        return failed();
    if (sqlite3_open_v2(sqlite3_db_filename(db_, "main"), &readDb_, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK) {
        error = readDb_ ? sqlite3_errmsg(readDb_) : "out of memory";
        return false;
    }
    sqlite3_busy_timeout(readDb_, 5000);
    if (sqlite3_prepare_v3(readDb_, BestQuery, -1, SQLITE_PREPARE_PERSISTENT, &best_, nullptr) != SQLITE_OK) {
        error = sqlite3_errmsg(readDb_);
        return false;
    }
    return true;
}

SqliteHiscoreStore::~SqliteHiscoreStore() {
    for (sqlite3_stmt* statement : {begin_, commit_, rollback_, addSubmission_, addEntry_, best_})
        sqlite3_finalize(statement);
    sqlite3_close_v2(readDb_);
    sqlite3_close_v2(db_);
}

bool SqliteHiscoreStore::Add(const Submission& submission, const std::string& received, const std::string& sender) {
    const std::lock_guard lock(writeMutex_);
    if (!StepDone(begin_)) return false;
    const auto write = [&] {
        sqlite3_int64 id = 0;
        {
            Use add(addSubmission_);
            sqlite3_bind_text(*add, 1, received.data(), static_cast<int>(received.size()), SQLITE_TRANSIENT);
            sqlite3_bind_text(*add, 2, sender.data(), static_cast<int>(sender.size()), SQLITE_TRANSIENT);
            if (submission.HasStat)
                sqlite3_bind_blob64(*add, 3, submission.Stat.data(), submission.Stat.size(), SQLITE_TRANSIENT);
            if (sqlite3_step(*add) != SQLITE_DONE) return false;
            id = sqlite3_last_insert_rowid(db_);
        }
        for (const Submission::Place& place : submission.Places) {
            Use add(addEntry_);
            sqlite3_bind_int64(*add, 1, id);
            sqlite3_bind_int(*add, 2, place.Index);
            sqlite3_bind_blob64(*add, 3, place.Entry.Name.data(), place.Entry.Name.size(), SQLITE_TRANSIENT);
            sqlite3_bind_int(*add, 4, place.Entry.Level);
            sqlite3_bind_double(*add, 5, place.Entry.Score);
            if (sqlite3_step(*add) != SQLITE_DONE) return false;
        }
        return true;
    };
    if (write() && StepDone(commit_)) return true;
    StepDone(rollback_);
    return false;
}

std::optional<std::vector<StoredEntry>> SqliteHiscoreStore::Best(int count) {
    const std::lock_guard lock(readMutex_);
    std::vector<StoredEntry> best;
    Use query(best_);
    sqlite3_bind_int(*query, 1, count);
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(*query)) == SQLITE_ROW) {
        StoredEntry entry;
        const auto* name = static_cast<const char*>(sqlite3_column_blob(*query, 0));
        entry.Name.assign(name ? name : "", static_cast<std::size_t>(sqlite3_column_bytes(*query, 0)));
        entry.Level = static_cast<std::int16_t>(sqlite3_column_int(*query, 1));
        entry.Score = sqlite3_column_double(*query, 2);
        const auto* received = reinterpret_cast<const char*>(sqlite3_column_text(*query, 3));
        entry.Received = received ? received : "";
        best.push_back(std::move(entry));
    }
    if (step != SQLITE_DONE) return std::nullopt;
    return best;
}

} // namespace tolva::hiscored
