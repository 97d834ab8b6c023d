#pragma once
// A submission as the game's page posts it: the field `hiscoredata`, the table in the
// Internet form that the game's MakeHiscoreString builds with the default set's key
// (only that set's table is ever sent), and optionally `stat`, the player's statistics
// file as it stands. Reading it checks the table with the game's own ParseHiscoreString,
// so that the server and the game can never disagree on what a valid table is, and
// then with CheckGameTable, so that only a table the game can make is kept.
#include "FormFields.h"

#include "hiscores/Hiscores.h"

#include <string>
#include <vector>

namespace tolva::hiscored {

struct Submission {
    // The places that hold a score, best first, with their 0-based place.
    struct Place {
        int Index = 0;
        HiscoreEntry Entry;
    };
    std::vector<Place> Places;
    bool HasStat = false;
    std::string Stat;  // the bytes as they came
};

struct SubmissionRead {
    bool Ok = false;
    std::string Problem;  // one line, for the refusal page
    Submission Value;
};

// Checks the form and the table in it. A free place is left out;
// a table with no score at all is valid and has no places to store.
SubmissionRead ReadSubmission(const FormFields& form);

} // namespace tolva::hiscored
