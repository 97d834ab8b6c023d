// Fuzz target of the level-set reader. Any bytes are a levels.set; the first byte picks
// a default or another set. The reader must end, keep every record within its limits
// and call the hooks with menu entries 0..99 only. Built as a libFuzzer program with
// clang (tolva2_fuzz_levelset) and run in the level tests by a long randomised test.
#include "fuzz/FuzzCheck.h"
#include "levels/LevelSetReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

namespace {

void Check(bool condition, const char* what) { tolva::fuzz::Check(condition, "levelset", what); }

class CheckingHooks : public tolva::LevelSetHooks {
public:
    int menuEntries = 0;
    void SetSpellName(int, const std::string&) override {}
    void ShowLoading() override {}
    void SetLoadingLabel(const std::string&) override {}
    void SetSpellToolTip(int, const std::string&) override {}
    void LoadHiscores(std::int16_t) override {}
    void ClearLevelMenu() override {}
    void SetLevelMenuEntry(int index, const std::string&) override {
        Check(index >= 0 && index < tolva::MaxLevels, "a menu entry outside 0..99");
        ++menuEntries;
    }
    void SetTitle(const std::string& title) override {
        Check(title.rfind("TOLVA II  -  [", 0) == 0 && title.back() == ']', "a window title not of the form");
    }
    void DoEvents() override {}
    void DefaultSetCorrupted() override {}
    void LevelRoot(const std::string&) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static auto game = std::make_unique<tolva::LevelModule>();
    CheckingHooks hooks;
    tolva::LevelSetReader reader(*game, &hooks);
    reader.LevelSetPath = (size > 0 && (data[0] & 1)) ? "levels\\default\\" : "levels\\fuzz\\";
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    const tolva::LevelSetLoad load = reader.Load(in);

    Check(load.LevelHeads >= 0 && hooks.menuEntries == load.LevelsStored(), "menu entries differ from the levels stored");
    Check(load.DefaultSet == (load.Integrity != tolva::LevelSetIntegrity::NotChecked),
          "the integrity test ran for another set, or not for a default one");
    for (int i = 0; i < tolva::MaxLevels; ++i) {
        const tolva::LevelRecord& level = game->Levels[static_cast<std::size_t>(i)];
        Check(level.levelbricks >= 10 && level.levelbricks <= tolva::MaxBricks, "a board side outside 10..40");
        if (i >= load.LevelHeads)
            Check(level.LevelName.empty() && level.BrickGrid(0, 0) == tolva::CellEmpty, "a level beyond the file is not empty");
    }
    return 0;
}
