#pragma once
// The embedded store: one SQLite file in WAL mode, so that pages are read while a
// submission is written, through a small pool of connections so that reads do not
// queue behind each other. Every statement is prepared once per connection and bound,
// never built from text. A submission is one transaction, synced at its commit, so an
// answered submission survives the server being killed and the machine losing power.
// Several servers on one machine may share the file: SQLite locks it between them.
#include "ConnectionPool.h"
#include "HiscoreStore.h"

#include <memory>
#include <string>

namespace tolva::hiscored {

class SqliteConnection;

class SqliteHiscoreStore final : public HiscoreStore {
public:
    // Opens (or makes) the database at `path`, bringing an older server's file up to
    // the present tables. On failure `error` says why in one line.
    static std::unique_ptr<SqliteHiscoreStore> Open(const std::string& path, std::string& error);
    ~SqliteHiscoreStore() override;

    SqliteHiscoreStore(const SqliteHiscoreStore&) = delete;
    SqliteHiscoreStore& operator=(const SqliteHiscoreStore&) = delete;

    AddResult Add(const Submission& submission, const Arrival& arrival) override;
    std::optional<std::vector<StoredEntry>> Best(int count) override;

private:
    explicit SqliteHiscoreStore(const std::string& path);

    std::string path_;
    ConnectionPool<SqliteConnection> pool_;
};

} // namespace tolva::hiscored
