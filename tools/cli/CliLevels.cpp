// tolva2-cli levels: tools for level makers.
//   levels check DIR               load the set in DIR as the game does and report it
//   levels seal DIR                write the checksum line that makes DIR a default-type set
//   levels solve DIR [--level N] [--budget SECONDS]
//                                  find plain clicks that clear each level, proven on
//                                  the game's own board before they are printed
//   levels rate DIR [--tries N] [--seed S] [--level N]
//                                  how often a player who clicks random groups clears
//                                  each level and how much of it such players leave: a
//                                  header, then one tab-separated line a level
// DIR is the set's own folder (the one holding levels.set). It is loaded the way the
// game loads levels\<folder>\, so that a folder whose name ends in "default" is checked
// as a default set, with the default set's key.
#include "CliCommand.h"
#include "CliSessionParts.h"

#include "EngineReplay.h"
#include "LevelRating.h"
#include "LevelSetText.h"
#include "LevelSolver.h"
#include "SolutionText.h"
#include "levels/LevelSetReader.h"
#include "support/ZenkorModule.h"

#include <charconv>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace tolva::cli {
namespace {

namespace fs = std::filesystem;

// Points the game folder at DIR's parent and gives the stored set path of DIR.
bool EnterSet(const std::string& dir, std::string& levelSetPath, std::string& error) {
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) {
        error = "no such folder: " + dir;
        return false;
    }
    fs::path path = fs::absolute(dir, ec).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();   // "x/" ends in an empty name
    SetAppPath(path.parent_path().string());
    levelSetPath = path.filename().string() + "\\";
    return true;
}

const char* IntegrityText(LevelSetIntegrity integrity) {
    switch (integrity) {
    case LevelSetIntegrity::Ok: return "ok";
    case LevelSetIntegrity::Failed: return "failed";
    case LevelSetIntegrity::NotChecked: return "not checked";
    }
    return "not checked";
}

struct LoadedSet {
    std::unique_ptr<LevelModule> game = std::make_unique<LevelModule>();
    LevelSetLoad load;
};

bool LoadSet(const std::string& dir, LoadedSet& set, std::string& error) {
    std::string levelSetPath;
    if (!EnterSet(dir, levelSetPath, error)) return false;
    LevelSetReader reader(*set.game);
    reader.LevelSetPath = levelSetPath;
    set.load = reader.InitLevels();
    return true;
}

int RunCheck(const std::string& dir) {
    LoadedSet set;
    std::string error;
    if (!LoadSet(dir, set, error)) return UsageError("levels check: " + error);
    const LevelSetLoad& load = set.load;
    std::cout << "set: " << load.SetName << '\n'
              << "levels: " << load.LevelsStored() << '\n'
              << "checksum: " << NumberText(load.LevelChecksum) << '\n'
              << "default: " << (load.DefaultSet ? "yes" : "no") << '\n'
              << "integrity: " << IntegrityText(load.Integrity) << '\n';
    for (int i = 0; i < load.LevelsStored(); ++i) {
        const LevelRecord& level = set.game->Levels[static_cast<std::size_t>(i)];
        std::cout << "level " << i + 1 << ": size " << level.levelbricks << ", folder \"" << level.levelgfxfolder
                  << "\", name \"" << level.LevelName << "\"\n";
        if (level.LevelName.empty())
            std::cerr << "tolva2-cli: levels check: level " << i + 1 << " has no name; the game's set ends before it\n";
    }
    if (load.LevelHeads > MaxLevels)
        std::cerr << "tolva2-cli: levels check: " << load.LevelHeads - MaxLevels << " levels beyond the 100th are dropped\n";
    if (load.SidesCut > 0)
        std::cerr << "tolva2-cli: levels check: " << load.SidesCut << " levels are larger than 40 and play as 40\n";
    if (load.TooLarge) {
        std::cerr << "tolva2-cli: levels check: " << dir << "'s levels.set is over " << (MaxLevelSetBytes >> 20)
                  << " MiB: damaged\n";
        return ExitFailed;
    }
    if (!load.FileFound) {
        std::cerr << "tolva2-cli: levels check: " << dir << " holds no levels.set\n";
        return ExitFailed;
    }
    return load.Integrity == LevelSetIntegrity::Failed ? ExitFailed : ExitOk;
}

int RunSeal(const std::string& dir) {
    std::string levelSetPath, error;
    if (!EnterSet(dir, levelSetPath, error)) return UsageError("levels seal: " + error);
    const std::string file = NativePath(AppPath() + levelSetPath + "levels.set");
    std::string text;
    const FileRead read = ReadFileWithin(AppPath() + levelSetPath + "levels.set", text, MaxLevelSetBytes);
    if (read != FileRead::Ok) {
        std::cerr << "tolva2-cli: levels seal: " << dir
                  << (read == FileRead::TooLarge ? "'s levels.set is too large" : " holds no readable levels.set") << '\n';
        return ExitFailed;
    }
    const levelgen::SealResult sealed = levelgen::SealLevelSet(text);
    // Written beside and renamed into place, so that a failed write leaves the old file.
    const std::string temp = file + ".seal-tmp";
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        out << sealed.text;
        if (!out.flush()) {
            std::remove(temp.c_str());
            std::cerr << "tolva2-cli: levels seal: could not write " << temp << '\n';
            return ExitFailed;
        }
    }
    if (std::rename(temp.c_str(), file.c_str()) != 0) {
        std::remove(temp.c_str());
        std::cerr << "tolva2-cli: levels seal: could not replace " << file << '\n';
        return ExitFailed;
    }
    std::cout << "checksum: " << NumberText(sealed.checksum) << '\n' << "sealed: " << file << '\n';
    return ExitOk;
}

// The whole text as a number, or nothing.
template <typename T>
bool ParseWhole(const std::string& text, T& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

// Seconds of budget: a finite number above 0. "inf", "nan" and numbers beyond a double
// are refused here; a huge finite budget is cut by the solver to one it can count.
bool ParseBudget(const std::string& text, double& seconds) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || end != text.c_str() + text.size() || errno == ERANGE) return false;
    if (!std::isfinite(value) || value <= 0) return false;
    seconds = value;
    return true;
}

int RunSolve(const std::vector<std::string>& args) {
    int only = 0;
    double budget = 10.0;
    for (std::size_t i = 2; i < args.size(); i += 2) {
        if (i + 1 >= args.size()) return UsageError("levels solve: missing value for " + args[i]);
        const std::string& value = args[i + 1];
        if (args[i] == "--level") {
            // 0 would read as "every level", which --level never means.
            if (!ParseWhole(value, only) || only < 1 || only > MaxLevels)
                return UsageError("levels solve: bad value '" + value + "' for --level (1..100)");
        } else if (args[i] == "--budget") {
            if (!ParseBudget(value, budget))
                return UsageError("levels solve: --budget '" + value + "' is not a finite positive number of seconds");
        } else {
            return UsageError("levels solve: unknown option " + args[i]);
        }
    }
    LoadedSet set;
    std::string error;
    if (!LoadSet(args[1], set, error)) return UsageError("levels solve: " + error);
    const int count = set.load.LevelsStored();
    if (only > count) return UsageError("levels solve: the set has " + std::to_string(count) + " levels");
    bool all = true;
    for (int n = only ? only : 1; n <= (only ? only : count); ++n) {
        const levelgen::PlayBoard board(set.game->Levels[static_cast<std::size_t>(n - 1)]);
        levelgen::SolveOptions options;
        options.seconds = budget;
        options.seed = static_cast<std::uint64_t>(n);
        const levelgen::SolveResult result = levelgen::SolveLevel(board, options);
        bool solved = result.solved && levelgen::ReplayClears(board, result.clicks);
        CliPlatform host(1);
        if (solved && !levelgen::EngineClears(*set.game, n, result.clicks, host.Platform())) {
            std::cerr << "tolva2-cli: levels solve: level " << n << ": the game's board does not clear with the clicks found\n";
            solved = false;
        }
        all = all && solved;
        std::cout << levelgen::FormatSolution(levelgen::SolutionLine{n, solved, result.clicks}) << std::endl;
    }
    return all ? ExitOk : ExitFailed;
}

int RunRate(const std::vector<std::string>& args) {
    int only = 0, tries = 200;
    std::uint64_t seed = 1;
    for (std::size_t i = 2; i < args.size(); i += 2) {
        if (i + 1 >= args.size()) return UsageError("levels rate: missing value for " + args[i]);
        const std::string& value = args[i + 1];
        bool ok = false;
        if (args[i] == "--level") ok = ParseWhole(value, only) && only >= 1 && only <= MaxLevels;
        else if (args[i] == "--tries") ok = ParseWhole(value, tries) && tries >= 1 && tries <= 1000000;
        else if (args[i] == "--seed") ok = ParseWhole(value, seed);
        else return UsageError("levels rate: unknown option " + args[i]);
        if (!ok) return UsageError("levels rate: bad value '" + value + "' for " + args[i] +
                                   " (--level 1..100, --tries 1..1000000, --seed 0 and up)");
    }
    LoadedSet set;
    std::string error;
    if (!LoadSet(args[1], set, error)) return UsageError("levels rate: " + error);
    const int count = set.load.LevelsStored();
    if (only > count) return UsageError("levels rate: the set has " + std::to_string(count) + " levels");
    if (!set.load.FileFound) {
        std::cerr << "tolva2-cli: levels rate: " << args[1] << " holds no levels.set\n";
        return ExitFailed;
    }
    std::cout << levelgen::RatingHeader() << '\n';
    for (int n = only ? only : 1; n <= (only ? only : count); ++n) {
        const levelgen::PlayBoard board(set.game->Levels[static_cast<std::size_t>(n - 1)]);
        std::cout << levelgen::FormatRating(levelgen::RateLevel(board, n, tries, seed)) << std::endl;
    }
    return ExitOk;
}

int RunLevels(const std::vector<std::string>& args) {
    if (args.empty()) return UsageError("levels needs a subcommand: check, seal, solve or rate");
    const std::string& sub = args[0];
    if (sub == "check" || sub == "seal") {
        if (args.size() != 2) return UsageError("levels " + sub + " needs one argument: DIR");
        return sub == "check" ? RunCheck(args[1]) : RunSeal(args[1]);
    }
    if (sub == "solve" || sub == "rate") {
        if (args.size() < 2) return UsageError("levels " + sub + " needs DIR");
        return sub == "solve" ? RunSolve(args) : RunRate(args);
    }
    return UsageError("unknown levels subcommand '" + sub + "'; use check, seal, solve or rate");
}

const CliRegistration registration{CliCommand{
    "levels",
    "levels check DIR                  load the level set in DIR as the game does and report it\n"
    "  levels seal DIR                   write its checksum line under the default set's key\n"
    "  levels solve DIR [--level N] [--budget SECONDS]\n"
    "                                    find plain clicks that clear each level (SECONDS\n"
    "                                    a level, default 10), proven on the game's board\n"
    "  levels rate DIR [--tries N] [--seed S] [--level N]\n"
    "                                    for each level, how many of N players (default 200)\n"
    "                                    who click random groups clear it; prints the header\n"
    "                                    level side bricks colours spells cleared tries rate left%\n"
    "                                    and one tab-separated line a level: rate is cleared/tries,\n"
    "                                    left% the mean share of the cells those players leave",
    RunLevels}};

} // namespace
} // namespace tolva::cli
