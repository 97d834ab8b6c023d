#pragma once
// Where the server keeps what it was sent. The server talks only to this interface, so
// that the embedded SQLite store and the PostgreSQL one (for a community that outgrows
// one machine) are interchangeable, and one test suite runs against both. Every method
// may be called from several threads at once, and several servers may share one
// database: nothing a second server would need is kept in the process.
#include "Submission.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolva::hiscored {

// One entry on the public table.
struct StoredEntry {
    std::string Name;  // code-page bytes, as the game wrote them
    std::int16_t Level = 0;
    double Score = 0;
    std::string Received;  // UTC, "YYYY-MM-DD HH:MM:SS", when it first came

    bool operator==(const StoredEntry&) const = default;
};

// What comes with a submission besides the table.
struct Arrival {
    std::string Received;      // UTC, "YYYY-MM-DD HH:MM:SS"
    std::int64_t Minute = 0;   // minutes since 1970: the window the rate limit counts in
    std::string Sender;        // the client's address
    int MaxPerMinute = 0;      // stored submissions one sender may make in a minute; 0: any
};

enum class AddResult {
    Stored,   // kept whole
    TooMany,  // the sender has used up its submissions of this minute; nothing kept
    Failed,   // the database failed; nothing kept
};

class HiscoreStore {
public:
    virtual ~HiscoreStore() = default;

    // Keeps the submission whole, or nothing of it. An entry (name, level and score)
    // that is already stored is not stored again: the first one received stays, with
    // its time, as every submission repeats the player's older places. The count of
    // the sender's submissions in `arrival`'s minute is kept in the database, in the
    // same transaction, so that servers sharing the database count together.
    virtual AddResult Add(const Submission& submission, const Arrival& arrival) = 0;

    // The best `count` entries, highest score first; equal scores by level (highest
    // first), then the one that came first, then the name. Read from an index, so its
    // cost does not grow with the number of entries. None if the store failed.
    virtual std::optional<std::vector<StoredEntry>> Best(int count) = 0;
};

} // namespace tolva::hiscored
