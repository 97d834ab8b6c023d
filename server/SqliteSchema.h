#pragma once
// The tables of the SQLite store and its statements. The PostgreSQL store has the same
// tables in its own dialect (PostgresHiscoreStore.cpp), so the two answer alike.
struct sqlite3;

#include <string>

namespace tolva::hiscored {

// Makes the tables in a new file, or brings a file of an older server up to them, in
// one transaction; sets WAL mode. False with `error` if the file cannot be used (it is
// not a database, it was made by a newer server, WAL is refused).
bool MakeSqliteSchema(sqlite3* db, std::string& error);

namespace SqliteStatements {

// One more submission of a sender in a minute, giving the new count.
inline constexpr const char* CountSender = R"sql(
INSERT INTO sender_minute (sender, minute, count) VALUES (?1, ?2, 1)
ON CONFLICT (sender, minute) DO UPDATE SET count = count + 1
RETURNING count
)sql";
// The counts of minutes that are over, which nobody needs any more.
inline constexpr const char* ForgetMinutes = "DELETE FROM sender_minute WHERE minute < ?1";
inline constexpr const char* AddSubmission = "INSERT INTO submission (received, sender, stat) VALUES (?1, ?2, ?3)";
// An entry already stored keeps its first submission and time.
inline constexpr const char* AddEntry = R"sql(
INSERT INTO entry (submission, place, name, level, score, received) VALUES (?1, ?2, ?3, ?4, ?5, ?6)
ON CONFLICT (name, level, score) DO NOTHING
)sql";
// Walks the index entry_by_rank from its start and stops after ?1 rows.
inline constexpr const char* Best = R"sql(
SELECT name, level, score, received FROM entry
ORDER BY score DESC, level DESC, received, name
LIMIT ?1
)sql";

} // namespace SqliteStatements

} // namespace tolva::hiscored
