// The cost of the page of the best 100 and of one submission as the stores grow: each
// store is filled once per size with entries of random scores (straight into its
// tables, in one transaction, as a million submissions one by one would take hours),
// then timed through the store interface the server uses.
#include "OpenStore.h"
#include "PrivatePostgres.h"

#include <benchmark/benchmark.h>
#include <libpq-fe.h>
#include <sqlite3.h>

#include <filesystem>
#include <map>
#include <random>

using namespace tolva::hiscored;

namespace {

constexpr const char* FillSqlite = R"sql(
INSERT INTO submission (id, received, sender) VALUES (1, '2024-01-01 00:00:00', 'bench');
WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < ?1)
INSERT INTO entry (submission, place, name, level, score, received)
SELECT 1, 0, char(65 + i % 26, 65 + i / 26 % 26, 65 + i / 676 % 26), 1 + abs(random()) % 100,
       1 + abs(random()) % 346000000, '2024-01-01 00:00:00'
FROM n WHERE true ON CONFLICT DO NOTHING;
)sql";

constexpr const char* FillPostgres = R"sql(
INSERT INTO submission (id, received, sender) VALUES (1, '2024-01-01 00:00:00', 'bench');
SELECT setval(pg_get_serial_sequence('submission', 'id'), 1);
INSERT INTO entry (submission, place, name, level, score, received)
SELECT 1, 0, convert_to(chr(65 + i % 26) || chr(65 + i / 26 % 26) || chr(65 + i / 676 % 26), 'UTF8'),
       1 + floor(random() * 100)::int, 1 + floor(random() * 346000000), '2024-01-01 00:00:00'
FROM generate_series(0, $1 - 1) AS i ON CONFLICT DO NOTHING;
ANALYZE entry;
)sql";

// A temporary folder for the SQLite files, removed at the end of the run.
struct Scratch {
    Scratch() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tolva2-bench-XXXXXX").string();
        if (::mkdtemp(pattern.data())) Path = pattern;
    }
    ~Scratch() {
        std::error_code error;
        if (!Path.empty()) std::filesystem::remove_all(Path, error);
    }
    std::string Path;
};

bool Fill(const std::string& database, long entries) {
    if (database.find("://") != std::string::npos) {
        PGconn* conn = PQconnectdb(database.c_str());
        std::string sql = FillPostgres;
        sql.replace(sql.find("$1"), 2, std::to_string(entries));
        PGresult* result = PQexec(conn, sql.c_str());
        const bool ok = PQresultStatus(result) == PGRES_COMMAND_OK;
        PQclear(result);
        PQfinish(conn);
        return ok;
    }
    sqlite3* db = nullptr;
    sqlite3_open(database.c_str(), &db);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    const char* rest = FillSqlite;
    bool ok = true;
    while (ok && rest && *rest) {
        sqlite3_stmt* statement = nullptr;
        ok = sqlite3_prepare_v2(db, rest, -1, &statement, &rest) == SQLITE_OK;
        if (!statement) break;
        sqlite3_bind_int64(statement, 1, entries);
        ok = ok && sqlite3_step(statement) == SQLITE_DONE;
        sqlite3_finalize(statement);
    }
    sqlite3_exec(db, ok ? "COMMIT" : "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return ok;
}

// One filled store per kind and size, made on first use and kept for the run.
HiscoreStore* StoreOf(const std::string& kind, long entries, std::string& why) {
    static const Scratch folder;  // made first, so removed after the stores close
    static std::map<std::pair<std::string, long>, std::unique_ptr<HiscoreStore>> stores;
    auto& store = stores[{kind, entries}];
    if (store) return store.get();
    std::string database;
    if (kind == "SQLite") {
        database = folder.Path + "/" + std::to_string(entries) + ".sqlite";
    } else {
        database = tolva::testing::PrivatePostgres::Shared().NewDatabase();
        if (database.empty()) {
            why = "PostgreSQL cannot start here: " + tolva::testing::PrivatePostgres::Shared().Why();
            return nullptr;
        }
    }
    std::string error;
    std::unique_ptr<HiscoreStore> opened = OpenStore(database, error);
    if (!opened || !Fill(database, entries)) {
        why = "cannot fill the store: " + error;
        return nullptr;
    }
    store = std::move(opened);
    return store.get();
}

void Page(benchmark::State& state, const std::string& kind) {
    std::string why;
    HiscoreStore* store = StoreOf(kind, state.range(0), why);
    if (!store) return state.SkipWithError(why.c_str());
    for (auto _ : state) {
        const auto best = store->Best(100);
        if (!best || best->size() != 100) return state.SkipWithError("the page is not whole");
        benchmark::DoNotOptimize(best);
    }
}

void Submit(benchmark::State& state, const std::string& kind) {
    std::string why;
    HiscoreStore* store = StoreOf(kind, state.range(0), why);
    if (!store) return state.SkipWithError(why.c_str());
    static long next = 0;
    for (auto _ : state) {
        // A full table of ten new entries, from addresses that never hit the limit.
        Submission submission;
        for (int place = 0; place < 10; ++place)
            submission.Places.push_back({place, {"NEW", 50, 400000000.0 + static_cast<double>(next++)}});
        const Arrival arrival{"2024-06-01 00:00:00", next, "10.1.0." + std::to_string(next % 200), 10};
        if (store->Add(submission, arrival) != AddResult::Stored) return state.SkipWithError("not stored");
    }
}

} // namespace

BENCHMARK_CAPTURE(Page, SQLite, std::string("SQLite"))->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Submit, SQLite, std::string("SQLite"))->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, PostgreSQL, std::string("PostgreSQL"))->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Submit, PostgreSQL, std::string("PostgreSQL"))->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
