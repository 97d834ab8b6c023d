#pragma once
// Where the server keeps what it was sent. The server talks only to this interface, so
// that a store on a database server (PostgreSQL, for a community that outgrows one
// machine) can stand beside the embedded SQLite one without touching the HTTP side.
// Every method may be called from several threads at once.
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
    std::string Received;  // UTC, "YYYY-MM-DD HH:MM:SS"
};

class HiscoreStore {
public:
    virtual ~HiscoreStore() = default;

    // Keeps the submission whole, with the time it came (UTC, as above) and the
    // sender's address, or nothing of it. False if it could not be kept.
    virtual bool Add(const Submission& submission, const std::string& received, const std::string& sender) = 0;

    // The best `count` entries of all submissions, highest score first. An entry sent
    // again in a later submission (same name, level and score, as every submission
    // repeats the player's older places) is shown once, with the first time it came.
    // None if the store could not be read.
    virtual std::optional<std::vector<StoredEntry>> Best(int count) = 0;
};

} // namespace tolva::hiscored
