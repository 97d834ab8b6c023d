#include "PostgresHiscoreStore.h"

#include <libpq-fe.h>

#include <algorithm>
#include <tuple>
#include <charconv>
#include <cstdlib>

namespace tolva::hiscored {

namespace {

constexpr std::size_t PoolSize = 8;
// A submission that lost a deadlock or a serialisation race is tried again this often.
constexpr int Attempts = 3;

constexpr const char* Tables = R"sql(
SELECT pg_advisory_xact_lock(7402716);
CREATE TABLE IF NOT EXISTS submission (
    id        BIGSERIAL PRIMARY KEY,
    received  TEXT NOT NULL,
    sender    TEXT NOT NULL,
    stat      BYTEA
);
CREATE TABLE IF NOT EXISTS entry (
    id          BIGSERIAL PRIMARY KEY,
    submission  BIGINT NOT NULL REFERENCES submission(id),
    place       INTEGER NOT NULL,
    name        BYTEA NOT NULL,
    level       INTEGER NOT NULL,
    score       DOUBLE PRECISION NOT NULL,
    received    TEXT NOT NULL,
    UNIQUE (name, level, score)
);
CREATE INDEX IF NOT EXISTS entry_by_rank ON entry(score DESC, level DESC, received COLLATE "C", name);
CREATE TABLE IF NOT EXISTS sender_minute (
    sender  TEXT NOT NULL,
    minute  BIGINT NOT NULL,
    count   INTEGER NOT NULL,
    PRIMARY KEY (sender, minute)
);
CREATE INDEX IF NOT EXISTS sender_minute_by_minute ON sender_minute(minute);
)sql";

struct Statement {
    const char* Name;
    const char* Sql;
};
constexpr Statement CountSender = {"count_sender", R"sql(
INSERT INTO sender_minute (sender, minute, count) VALUES ($1, $2, 1)
ON CONFLICT (sender, minute) DO UPDATE SET count = sender_minute.count + 1
RETURNING count)sql"};
constexpr Statement ForgetMinutes = {"forget_minutes", "DELETE FROM sender_minute WHERE minute < $1"};
constexpr Statement AddSubmission = {
    "add_submission", "INSERT INTO submission (received, sender, stat) VALUES ($1, $2, $3) RETURNING id"};
constexpr Statement AddEntry = {"add_entry", R"sql(
INSERT INTO entry (submission, place, name, level, score, received) VALUES ($1, $2, $3, $4, $5, $6)
ON CONFLICT (name, level, score) DO NOTHING)sql"};
// The same order as the SQLite store's: the received times are plain ASCII, compared
// byte by byte as SQLite compares them.
constexpr Statement BestQuery = {"best", R"sql(
SELECT name, level, score, received FROM entry
ORDER BY score DESC, level DESC, received COLLATE "C", name
LIMIT $1)sql"};

// A result that is cleared when it goes.
class Result {
public:
    explicit Result(PGresult* result) : result_(result) {}
    ~Result() { PQclear(result_); }
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;
    PGresult* operator*() const { return result_; }
    bool Ok() const {
        const ExecStatusType status = PQresultStatus(result_);
        return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
    }
    // True if the server gave up the transaction for a race another try may win.
    bool LostRace() const {
        const char* state = PQresultErrorField(result_, PG_DIAG_SQLSTATE);
        return state && (std::string_view(state) == "40P01" || std::string_view(state) == "40001");
    }

private:
    PGresult* result_;
};

std::string NumberText(double value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}

} // namespace

class PostgresConnection {
public:
    ~PostgresConnection() { PQfinish(conn); }

    static std::unique_ptr<PostgresConnection> Open(const std::string& uri, bool makeSchema, std::string& error) {
        auto connection = std::make_unique<PostgresConnection>();
        connection->conn = PQconnectdb(uri.c_str());
        if (!connection->conn || PQstatus(connection->conn) != CONNECTION_OK) {
            error = "cannot connect to the PostgreSQL database: " + connection->Error();
            return nullptr;
        }
        if ((makeSchema && !connection->MakeSchema(error)) || !connection->Prepare(error)) return nullptr;
        return connection;
    }

    // The parameters are text, but for the ones marked binary (byte strings).
    PGresult* Run(const Statement& statement, std::initializer_list<const std::string*> values,
                  std::initializer_list<bool> binary = {}) {
        std::vector<const char*> data;
        std::vector<int> lengths, formats;
        auto isBinary = binary.begin();
        for (const std::string* value : values) {
            const bool asBytes = isBinary != binary.end() && *isBinary++;
            data.push_back(value ? value->data() : nullptr);
            lengths.push_back(value ? static_cast<int>(value->size()) : 0);
            formats.push_back(asBytes ? 1 : 0);
        }
        return PQexecPrepared(conn, statement.Name, static_cast<int>(data.size()), data.data(), lengths.data(),
                              formats.data(), 0);
    }
    bool Exec(const char* sql) { return Result(PQexec(conn, sql)).Ok(); }
    bool Healthy() const { return PQstatus(conn) == CONNECTION_OK; }
    std::string Error() const {
        std::string message = conn ? PQerrorMessage(conn) : "out of memory";
        while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) message.pop_back();
        std::replace(message.begin(), message.end(), '\n', ' ');
        return message;
    }

    PGconn* conn = nullptr;

private:
    bool MakeSchema(std::string& error) {
        // Warnings such as "relation already exists, skipping" are not for the log.
        Exec("SET client_min_messages = warning");
        const bool made = Exec("BEGIN") && Exec(Tables) && Exec("COMMIT");
        if (!made) {
            error = "cannot make the tables: " + Error();
            Exec("ROLLBACK");
        }
        return made;
    }
    bool Prepare(std::string& error) {
        for (const Statement& statement : {CountSender, ForgetMinutes, AddSubmission, AddEntry, BestQuery}) {
            if (!Result(PQprepare(conn, statement.Name, statement.Sql, 0, nullptr)).Ok()) {
                error = "cannot prepare the statements: " + Error();
                return false;
            }
        }
        return true;
    }
};

bool PostgresHiscoreStore::IsUri(const std::string& database) {
    return database.rfind("postgresql://", 0) == 0 || database.rfind("postgres://", 0) == 0;
}

PostgresHiscoreStore::PostgresHiscoreStore(const std::string& uri)
    : pool_(PoolSize, [uri] {
          std::string ignored;
          return PostgresConnection::Open(uri, false, ignored);
      }) {}

PostgresHiscoreStore::~PostgresHiscoreStore() = default;

std::unique_ptr<PostgresHiscoreStore> PostgresHiscoreStore::Open(const std::string& uri, std::string& error) {
    std::unique_ptr<PostgresConnection> first = PostgresConnection::Open(uri, true, error);
    if (!first) return nullptr;
    std::unique_ptr<PostgresHiscoreStore> store(new PostgresHiscoreStore(uri));
    store->pool_.Adopt(std::move(first));
    return store;
}

AddResult PostgresHiscoreStore::Add(const Submission& submission, const Arrival& arrival) {
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        ConnectionPool<PostgresConnection>::Lease connection = pool_.Borrow();
        if (!connection) return AddResult::Failed;
        bool retry = false;
        const AddResult result = TryAdd(*connection, submission, arrival, retry);
        if (!connection->Healthy()) connection.Discard();
        if (!retry) return result;
    }
    return AddResult::Failed;
}

AddResult PostgresHiscoreStore::TryAdd(PostgresConnection& connection, const Submission& submission,
                                       const Arrival& arrival, bool& retry) {
    if (!connection.Exec("BEGIN")) return AddResult::Failed;
    const auto failed = [&](const Result& result) {
        retry = result.LostRace();
        connection.Exec("ROLLBACK");
        return AddResult::Failed;
    };
    if (arrival.MaxPerMinute > 0) {
        const std::string before = std::to_string(arrival.Minute - 1), minute = std::to_string(arrival.Minute);
        if (Result forget(connection.Run(ForgetMinutes, {&before})); !forget.Ok()) return failed(forget);
        Result count(connection.Run(CountSender, {&arrival.Sender, &minute}));
        if (!count.Ok() || PQntuples(*count) != 1) return failed(count);
        if (std::atoll(PQgetvalue(*count, 0, 0)) > arrival.MaxPerMinute) {
            connection.Exec("ROLLBACK");
            return AddResult::TooMany;
        }
    }
    Result added(connection.Run(AddSubmission, {&arrival.Received, &arrival.Sender,
                                                submission.HasStat ? &submission.Stat : nullptr},
                                {false, false, true}));
    if (!added.Ok() || PQntuples(*added) != 1) return failed(added);
    const std::string id = PQgetvalue(*added, 0, 0);

    // One order for every submission: by score, level and name.
    std::vector<const Submission::Place*> places;
    for (const Submission::Place& place : submission.Places) places.push_back(&place);
    std::sort(places.begin(), places.end(), [](const auto* a, const auto* b) {
        return std::tie(b->Entry.Score, b->Entry.Level, a->Entry.Name) <
               std::tie(a->Entry.Score, a->Entry.Level, b->Entry.Name);
    });
    for (const Submission::Place* place : places) {
        const std::string index = std::to_string(place->Index), level = std::to_string(place->Entry.Level),
                          score = NumberText(place->Entry.Score);
        Result entry(connection.Run(AddEntry, {&id, &index, &place->Entry.Name, &level, &score, &arrival.Received},
                                    {false, false, true}));
        if (!entry.Ok()) return failed(entry);
    }
    Result commit(PQexec(connection.conn, "COMMIT"));
    if (!commit.Ok() || std::string_view(PQcmdStatus(*commit)) != "COMMIT") return failed(commit);
    return AddResult::Stored;
}

std::optional<std::vector<StoredEntry>> PostgresHiscoreStore::Best(int count) {
    ConnectionPool<PostgresConnection>::Lease connection = pool_.Borrow();
    if (!connection) return std::nullopt;
    const std::string limit = std::to_string(count);
    Result rows(connection->Run(BestQuery, {&limit}));
    if (!rows.Ok()) {
        if (!connection->Healthy()) connection.Discard();
        return std::nullopt;
    }
    std::vector<StoredEntry> best;
    for (int row = 0; row < PQntuples(*rows); ++row) {
        StoredEntry entry;
        std::size_t length = 0;
        unsigned char* name =
            PQunescapeBytea(reinterpret_cast<const unsigned char*>(PQgetvalue(*rows, row, 0)), &length);
        if (!name) return std::nullopt;
        entry.Name.assign(reinterpret_cast<const char*>(name), length);
        PQfreemem(name);
        entry.Level = static_cast<std::int16_t>(std::atoi(PQgetvalue(*rows, row, 1)));
        entry.Score = std::strtod(PQgetvalue(*rows, row, 2), nullptr);
        entry.Received = PQgetvalue(*rows, row, 3);
        best.push_back(std::move(entry));
    }
    return best;
}

} // namespace tolva::hiscored
