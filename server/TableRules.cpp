#include "TableRules.h"

#include "hiscores/InitialsEntry.h"

#include <cmath>

namespace tolva::hiscored {

namespace {

// True if typing the bytes of `name` into the game's initials window leaves exactly
// that text: a ',' or '.' would be ignored, a small letter turned into a capital, and
// Backspace, Enter and Escape do something else than add themselves.
bool InitialsCanWrite(const std::string& name) {
    if (name.empty() || name.size() > InitialsEntry::Length) return false;
    InitialsEntry entry;
    for (const char c : name) entry.Key(static_cast<unsigned char>(c));
    return entry.Text() == name;
}

std::string PlaceText(int index) { return "place " + std::to_string(index + 1); }

std::optional<std::string> CheckScoredPlace(const HiscoreEntry& entry, int index) {
    if (entry.Score < 1 || entry.Score > MaxScore || std::floor(entry.Score) != entry.Score)
        return PlaceText(index) + " has a score the game cannot reach";
    if (entry.Level < 0 || entry.Level > MaxLevel)
        return PlaceText(index) + " has a level outside 0 to " + std::to_string(MaxLevel);
    if (!InitialsCanWrite(entry.Name))
        return PlaceText(index) + " has a name the game's initials window cannot write";
    return std::nullopt;
}

} // namespace

std::optional<std::string> CheckGameTable(const Hiscores::Table& places) {
    const HiscoreEntry freePlace;
    bool freeSeen = false;
    for (int i = 0; i < Hiscores::Places; ++i) {
        const HiscoreEntry& entry = places[static_cast<std::size_t>(i)];
        if (entry.Score == 0 && entry.Name == freePlace.Name) {
            if (entry != freePlace) return PlaceText(i) + " is free but holds a level";
            freeSeen = true;
            continue;
        }
        if (freeSeen) return PlaceText(i) + " holds a score below a free place";
        if (const auto problem = CheckScoredPlace(entry, i)) return problem;
        if (i > 0 && entry.Score > places[static_cast<std::size_t>(i - 1)].Score)
            return PlaceText(i) + " has a higher score than the place above it";
    }
    return std::nullopt;
}

} // namespace tolva::hiscored
