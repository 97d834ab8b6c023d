#include "SqliteHiscoreStore.h"

#include "SqliteSchema.h"

#include <sqlite3.h>

namespace tolva::hiscored {

namespace {

constexpr std::size_t PoolSize = 8;
constexpr int BusyTimeoutMs = 5000;

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

void BindText(sqlite3_stmt* statement, int index, const std::string& text) {
    sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

} // namespace

// One connection with its statements; used by one thread at a time.
class SqliteConnection {
public:
    ~SqliteConnection() {
        for (sqlite3_stmt* statement : {begin, commit, rollback, countSender, forgetMinutes, addSubmission, addEntry, best})
            sqlite3_finalize(statement);
        sqlite3_close_v2(db);
    }

    static std::unique_ptr<SqliteConnection> Open(const std::string& path, bool makeSchema, std::string& error) {
        auto connection = std::make_unique<SqliteConnection>();
        const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
        if (sqlite3_open_v2(path.c_str(), &connection->db, flags, nullptr) != SQLITE_OK) {
            error = "cannot open the database '" + path + "': " +
                    (connection->db ? sqlite3_errmsg(connection->db) : "out of memory");
            return nullptr;
        }
        sqlite3_busy_timeout(connection->db, BusyTimeoutMs);
        if ((makeSchema && !MakeSqliteSchema(connection->db, error)) || !connection->Prepare(error)) {
            error = "cannot use the database '" + path + "': " + error;
            return nullptr;
        }
        return connection;
    }

    sqlite3* db = nullptr;
    sqlite3_stmt* begin = nullptr;
    sqlite3_stmt* commit = nullptr;
    sqlite3_stmt* rollback = nullptr;
    sqlite3_stmt* countSender = nullptr;
    sqlite3_stmt* forgetMinutes = nullptr;
    sqlite3_stmt* addSubmission = nullptr;
    sqlite3_stmt* addEntry = nullptr;
    sqlite3_stmt* best = nullptr;

private:
    bool Prepare(std::string& error) {
        if (sqlite3_exec(db, "PRAGMA synchronous = FULL; PRAGMA foreign_keys = ON;", nullptr, nullptr, nullptr) !=
            SQLITE_OK) {
            error = sqlite3_errmsg(db);
            return false;
        }
        const auto prepare = [&](const char* sql, sqlite3_stmt*& statement) {
            return sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) == SQLITE_OK;
        };
        if (prepare("BEGIN IMMEDIATE", begin) && prepare("COMMIT", commit) && prepare("ROLLBACK", rollback) &&
            prepare(SqliteStatements::CountSender, countSender) &&
            prepare(SqliteStatements::ForgetMinutes, forgetMinutes) &&
            prepare(SqliteStatements::AddSubmission, addSubmission) && prepare(SqliteStatements::AddEntry, addEntry) &&
            prepare(SqliteStatements::Best, best))
            return true;
        error = sqlite3_errmsg(db);
        return false;
    }
};

SqliteHiscoreStore::SqliteHiscoreStore(const std::string& path)
    : path_(path), pool_(PoolSize, [path] {
          std::string ignored;
          return SqliteConnection::Open(path, false, ignored);
      }) {}

SqliteHiscoreStore::~SqliteHiscoreStore() = default;

std::unique_ptr<SqliteHiscoreStore> SqliteHiscoreStore::Open(const std::string& path, std::string& error) {
    std::unique_ptr<SqliteConnection> first = SqliteConnection::Open(path, true, error);
    if (!first) return nullptr;
    // The pool opens the others by the file's full name, which stays right if the
    // working folder changes.
    const char* full = sqlite3_db_filename(first->db, "main");
    std::unique_ptr<SqliteHiscoreStore> store(new SqliteHiscoreStore(full && *full ? full : path));
    store->pool_.Adopt(std::move(first));
    return store;
}

AddResult SqliteHiscoreStore::Add(const Submission& submission, const Arrival& arrival) {
    ConnectionPool<SqliteConnection>::Lease connection = pool_.Borrow();
    if (!connection) return AddResult::Failed;
    if (!StepDone(connection->begin)) return AddResult::Failed;
    bool tooMany = false;
    const auto write = [&] {
        if (arrival.MaxPerMinute > 0) {
            {
                Use forget(connection->forgetMinutes);
                sqlite3_bind_int64(*forget, 1, arrival.Minute - 1);
                if (sqlite3_step(*forget) != SQLITE_DONE) return false;
            }
            Use count(connection->countSender);
            BindText(*count, 1, arrival.Sender);
            sqlite3_bind_int64(*count, 2, arrival.Minute);
            if (sqlite3_step(*count) != SQLITE_ROW) return false;
            tooMany = sqlite3_column_int64(*count, 0) > arrival.MaxPerMinute;
            if (tooMany || sqlite3_step(*count) != SQLITE_DONE) return false;
        }
        sqlite3_int64 id = 0;
        {
            Use add(connection->addSubmission);
            BindText(*add, 1, arrival.Received);
            BindText(*add, 2, arrival.Sender);
            if (submission.HasStat)
                sqlite3_bind_blob64(*add, 3, submission.Stat.data(), submission.Stat.size(), SQLITE_TRANSIENT);
            if (sqlite3_step(*add) != SQLITE_DONE) return false;
            id = sqlite3_last_insert_rowid(connection->db);
        }
        for (const Submission::Place& place : submission.Places) {
            Use add(connection->addEntry);
            sqlite3_bind_int64(*add, 1, id);
            sqlite3_bind_int(*add, 2, place.Index);
            sqlite3_bind_blob64(*add, 3, place.Entry.Name.data(), place.Entry.Name.size(), SQLITE_TRANSIENT);
            sqlite3_bind_int(*add, 4, place.Entry.Level);
            sqlite3_bind_double(*add, 5, place.Entry.Score);
            BindText(*add, 6, arrival.Received);
            if (sqlite3_step(*add) != SQLITE_DONE) return false;
        }
        return true;
    };
    if (write() && StepDone(connection->commit)) return AddResult::Stored;
    StepDone(connection->rollback);
    return tooMany ? AddResult::TooMany : AddResult::Failed;
}

std::optional<std::vector<StoredEntry>> SqliteHiscoreStore::Best(int count) {
    ConnectionPool<SqliteConnection>::Lease connection = pool_.Borrow();
    if (!connection) return std::nullopt;
    std::vector<StoredEntry> best;
    Use query(connection->best);
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
