#pragma once
// The store for more than one machine: a PostgreSQL database named by a libpq URI
// ("postgresql://user@host/db" or "postgres://..."), shared by any number of servers.
// The tables are those of the SQLite store in PostgreSQL's dialect, made on the first
// start under an advisory lock, so that two servers starting at once do not race.
// Each submission is one transaction; entries are inserted in one fixed order, so that
// two submissions that share entries wait for each other instead of deadlocking.
#include "ConnectionPool.h"
#include "HiscoreStore.h"

#include <memory>
#include <string>

namespace tolva::hiscored {

class PostgresConnection;

class PostgresHiscoreStore final : public HiscoreStore {
public:
    // Connects, makes the tables if they are missing. On failure `error` says why in
    // one line (the URI's password, if any, is not repeated).
    static std::unique_ptr<PostgresHiscoreStore> Open(const std::string& uri, std::string& error);
    ~PostgresHiscoreStore() override;

    AddResult Add(const Submission& submission, const Arrival& arrival) override;
    std::optional<std::vector<StoredEntry>> Best(int count) override;

    // True if `database` names a PostgreSQL database rather than a file.
    static bool IsUri(const std::string& database);

private:
    explicit PostgresHiscoreStore(const std::string& uri);
    AddResult TryAdd(PostgresConnection& connection, const Submission& submission, const Arrival& arrival,
                     bool& retry);

    ConnectionPool<PostgresConnection> pool_;
};

} // namespace tolva::hiscored
