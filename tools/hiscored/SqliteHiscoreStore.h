#pragma once
// The embedded store: one SQLite file in WAL mode, so that the page can be read while
// a submission is written, with every statement prepared once and bound, never built
// from text. A submission is one transaction; the file is synced at each commit, so an
// answered submission survives the server being killed and the machine losing power.
#include "HiscoreStore.h"

#include <memory>
#include <mutex>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace tolva::hiscored {

class SqliteHiscoreStore final : public HiscoreStore {
public:
    // Opens (or makes) the database at `path`. On failure the store is not usable and
    // `error` says why in one line.
    static std::unique_ptr<SqliteHiscoreStore> Open(const std::string& path, std::string& error);
    ~SqliteHiscoreStore() override;

    SqliteHiscoreStore(const SqliteHiscoreStore&) = delete;
    SqliteHiscoreStore& operator=(const SqliteHiscoreStore&) = delete;

    bool Add(const Submission& submission, const std::string& received, const std::string& sender) override;
    std::optional<std::vector<StoredEntry>> Best(int count) override;

private:
    SqliteHiscoreStore() = default;
    bool Prepare(std::string& error);
    bool Execute(const char* sql);

    // Two connections, each used by one thread at a time: one that writes (the writes
    // are serialised by the database anyway) and one that reads, which WAL lets go on
    // while a submission is being written.
    std::mutex writeMutex_;
    std::mutex readMutex_;
    sqlite3* db_ = nullptr;
    sqlite3* readDb_ = nullptr;
    sqlite3_stmt* begin_ = nullptr;
    sqlite3_stmt* commit_ = nullptr;
    sqlite3_stmt* rollback_ = nullptr;
    sqlite3_stmt* addSubmission_ = nullptr;
    sqlite3_stmt* addEntry_ = nullptr;
    sqlite3_stmt* best_ = nullptr;
};

} // namespace tolva::hiscored
