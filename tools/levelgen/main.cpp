// tolva2-levelgen: remakes the level sets shipped with the game and the solutions that
// prove every level clearable. Every level shipped is also one the solver clears on its
// own within --prove boards looked at (0 leaves the solver out). Deterministic from
// --seed and --prove: with the same solver, the same values give the same bytes.
// Example, from the source folder:
//   tolva2-levelgen --plan default --set game/levels/default/levels.set
//       --solutions tools/levelgen/default-solutions.txt --jobs 2
#include "LevelSetMaker.h"
#include "LevelSetText.h"
#include "SolutionText.h"

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using namespace tolva::levelgen;

struct Arguments {
    std::string plan = "default";
    std::string setFile;
    std::string solutionFile;
    MakeOptions make;
    int only = 0;   // make and show this one level instead of the set
};

// Boards the solver may look at to prove a level: about 6 s on the machine the sets are
// made on, half of the 12 s that `levels solve` gives its first passes at its usual
// budget of 60 s, where it then finds the very same clear.
constexpr std::uint64_t DefaultProveStates = 4'000'000;

int Usage(const std::string& message) {
    std::cerr << "tolva2-levelgen: " << message << "\n"
              << "usage: tolva2-levelgen --plan default|miniatures --set FILE --solutions FILE\n"
              << "                       [--seed N] [--jobs N] [--players N] [--prove BOARDS] [--only LEVEL]\n";
    return 2;
}

// A whole number of 0 or more, digits only: std::stoull alone would take "-1" for the
// largest number there is, and a --prove of that would never end.
std::uint64_t Count(const std::string& value) {
    if (value.empty() || value.find_first_not_of("0123456789") != std::string::npos)
        throw std::invalid_argument(value);
    return std::stoull(value);
}

bool Parse(int argc, char** argv, Arguments& a, std::string& error) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc) { error = "missing value for " + arg; return false; }
        const std::string value = argv[++i];
        try {
            if (arg == "--plan") a.plan = value;
            else if (arg == "--set") a.setFile = value;
            else if (arg == "--solutions") a.solutionFile = value;
            else if (arg == "--seed") a.make.seed = Count(value);
            else if (arg == "--jobs") a.make.jobs = std::stoi(value);
            else if (arg == "--players") a.make.randomPlayers = std::stoi(value);
            else if (arg == "--only") a.only = std::stoi(value);
            else if (arg == "--prove") a.make.proveStates = Count(value);
            else { error = "unknown option " + arg; return false; }
        } catch (const std::exception&) {
            error = "bad number for " + arg;
            return false;
        }
    }
    if (a.plan != "default" && a.plan != "miniatures") { error = "unknown plan " + a.plan; return false; }
    if (a.only == 0 && (a.setFile.empty() || a.solutionFile.empty())) { error = "--set and --solutions are needed"; return false; }
    return true;
}

void Describe(int level, const MadeLevel& m, std::ostream& out) {
    out << "level " << level << " \"" << m.record.LevelName << "\" side " << m.record.levelbricks << ", "
        << m.solution.size() << " clicks, greedy " << (m.judgement.greedyClears ? "clears" : "fails")
        << ", random players clear " << static_cast<int>(m.judgement.randomClearRate * 100 + 0.5) << "%\n";
}

void Show(const MadeLevel& m) {
    for (int y = 0; y < m.record.levelbricks; ++y) {
        for (int x = 0; x < m.record.levelbricks; ++x) {
            const int v = m.record.BrickGrid(x, y);
            std::cout << (v < 0 ? '.' : static_cast<char>('0' + v)) << (m.record.SpellGrid(x, y) >= 0 ? '*' : ' ');
        }
        std::cout << '\n';
    }
}

bool WriteFile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    return static_cast<bool>(out);
}

} // namespace

int main(int argc, char** argv) {
    Arguments a;
    a.make.proveStates = DefaultProveStates;
    std::string error;
    if (!Parse(argc, argv, a, error)) return Usage(error);
    const SetPlan plan = a.plan == "default" ? DefaultSetPlan() : MiniaturesSetPlan();
    if (a.only > 0) {
        if (a.only > static_cast<int>(plan.levels.size())) return Usage("no such level");
        MadeLevel m;
        try {
            m = MakeLevel(plan, a.only - 1, a.make);
        } catch (const std::exception& e) {
            std::cerr << "tolva2-levelgen: " << e.what() << '\n';
            return 1;
        }
        Show(m);
        Describe(a.only, m, std::cout);
        return 0;
    }
    a.make.progress = [](int level, const MadeLevel& m) { Describe(level, m, std::cerr); };
    std::vector<MadeLevel> made;
    try {
        made = MakeSet(plan, a.make);
    } catch (const std::exception& e) {
        std::cerr << "tolva2-levelgen: " << e.what() << '\n';
        return 1;
    }
    std::vector<tolva::LevelRecord> records;
    std::string solutions = "# Solutions of the level set \"" + plan.setName + "\", made by tolva2-levelgen --plan " +
                            a.plan + " --seed " + std::to_string(a.make.seed) + " --prove " +
                            std::to_string(a.make.proveStates) + ".\n" +
                            "# One line per level: the cells to click, in order, x from the left and y from the top.\n";
    for (std::size_t i = 0; i < made.size(); ++i) {
        records.push_back(made[i].record);
        solutions += FormatSolution(SolutionLine{static_cast<int>(i + 1), true, made[i].solution}) + "\n";
    }
    std::string setText = FormatLevelSet(plan.setName, records);
    if (a.plan == "default") setText = SealLevelSet(setText).text;
    if (!WriteFile(a.setFile, setText) || !WriteFile(a.solutionFile, solutions)) {
        std::cerr << "tolva2-levelgen: could not write the output files\n";
        return 1;
    }
    return 0;
}
