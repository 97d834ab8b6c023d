// Fuzz target of the hiscore file load. Any bytes are a hiscore.hi, loaded with the
// default set's key or another set's. What must hold:
//  - the load ends with ten entries, and a table thrown away as corrupted is ten free
//    places;
//  - a table that loaded saves (unless a name cannot stand in the file, when nothing is
//    written) into a file that loads again with the same levels and scores, and from
//    the game's own file on it saves and loads to the same bytes: a table the game
//    accepted is never lost by its own next save.
#include "fuzz/FuzzCheck.h"
#include "fuzz/FuzzFolder.h"
#include "hiscores/Hiscores.h"
#include "support/ZenkorModule.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

constexpr const char* Target = "hiscores";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::int16_t key = (data[0] & 1) ? tolva::DefaultSetKey : tolva::OtherSetKey;
    const auto& folder = tolva::fuzz::FuzzFolder::Get();
    folder.Write("hiscore.hi", std::string(reinterpret_cast<const char*>(data) + 1, size - 1));

    tolva::Hiscores table;
    const tolva::HiscoreLoad result = table.Load(folder / "hiscore.hi", key);
    if (result != tolva::HiscoreLoad::Loaded) {
        tolva::fuzz::Check(table.Entries == tolva::Hiscores::Table{}, Target,
                           "a table that did not load is not ten free places");
        return 0;
    }
    if (!table.SaveScore(folder / "saved.hi", key)) {
        tolva::fuzz::Check(!table.FileBytes(key).has_value(), Target, "a table that has its bytes could not be saved");
        return 0;
    }
    tolva::Hiscores again;
    tolva::fuzz::Check(again.Load(folder / "saved.hi", key) == tolva::HiscoreLoad::Loaded, Target,
                       "a loaded table saved by the game does not load again");
    for (int i = 0; i < tolva::Hiscores::Places; ++i)
        tolva::fuzz::Check(again[i].Level == table[i].Level &&
                               tolva::NumberText(again[i].Score) == tolva::NumberText(table[i].Score),
                           Target, "a saved level or score did not come back");
    // A name of a hand-made file may come back once in the form the ini reader gives it
    // (an enciphered blank at an end trimmed); from then on it stays as it is.
    const auto second = again.FileBytes(key);
    tolva::fuzz::Check(second.has_value() && again.SaveScore(folder / "saved.hi", key), Target,
                       "a table loaded from the game's own file cannot be saved");
    tolva::Hiscores third;
    tolva::fuzz::Check(third.Load(folder / "saved.hi", key) == tolva::HiscoreLoad::Loaded &&
                           third.FileBytes(key) == second,
                       Target, "a table saved twice does not come back as it was saved");
    return 0;
}
