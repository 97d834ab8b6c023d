#pragma once
// The credits of the about window: one text for the rolling-text control, its lines
// separated by vertical bars. It opens with the game's name and version, the year and
// the maker, then a group for each role of the team, a closing invitation to write, and
// " E N D" as its last line.
#include <string>

namespace tolva {

// The credits with the given version ("v" major.minor.revision in plain decimal).
std::string CreditsText(int major, int minor, int revision);
// The credits with the program's own version.
std::string CreditsText();

} // namespace tolva
