#include "LevelSetMaker.h"

#include "LevelSolver.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <mutex>
#include <optional>
#include <random>
#include <stdexcept>
#include <thread>

namespace tolva::levelgen {
namespace {

std::vector<int> ChoosePalette(int colours, std::mt19937_64& rng) {
    std::vector<int> all{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    std::shuffle(all.begin(), all.end(), rng);
    all.resize(static_cast<std::size_t>(std::clamp(colours, 1, 10)));
    std::sort(all.begin(), all.end());
    return all;
}

// How forgiving a level is to a player who does not plan: the share of random players
// who clear it, and half a point more if the greedy player clears it.
double Friendliness(const Judgement& j) { return j.randomClearRate + (j.greedyClears ? 0.5 : 0.0); }

// When none of a level's planned candidates is proven, up to this many times as many
// again are designed, one at a time, until one is.
constexpr int ExtraDesignRounds = 2;

} // namespace

bool ProvenBySolver(const LevelRecord& level, int number, std::uint64_t states) {
    // Seeded with the level's number as `levels solve` is, and with all the time in the
    // world, so that only the count of boards ends the search: the answer is the same on
    // every machine, and a machine that looks at that many boards within the first
    // fifth of the solver's budget finds the very same clear there.
    SolveOptions options;
    options.seconds = MaxSolveSeconds;
    options.seed = static_cast<std::uint64_t>(number);
    options.maxStates = states;
    const PlayBoard board(level);
    const SolveResult result = SolveLevel(board, options);
    return result.solved && ReplayClears(board, result.clicks);
}

MadeLevel MakeLevel(const SetPlan& plan, int index, const MakeOptions& options) {
    const LevelPlanEntry& entry = plan.levels.at(static_cast<std::size_t>(index));
    auto design = [&](int c) -> std::optional<MadeLevel> {
        std::mt19937_64 rng(options.seed * 0x9E3779B97F4A7C15ull + static_cast<std::uint64_t>(index) * 7919u +
                            static_cast<std::uint64_t>(c) * 104729u);
        DesignRequest request;
        request.side = entry.side;
        request.mask = MakeShape(entry.shape, entry.side, static_cast<unsigned>(rng()));
        request.palette = ChoosePalette(entry.colours, rng);
        request.minGroup = entry.minGroup;
        request.maxGroup = entry.maxGroup;
        request.spells = entry.spells;
        for (int attempt = 0; attempt < 200; ++attempt) {
            auto designed = DesignLevel(request, rng);
            if (!designed) continue;
            MadeLevel level;
            level.record = designed->record;
            level.record.LevelName = entry.name;
            level.record.levelgfxfolder = entry.folder;
            level.solution = designed->solution;
            level.judgement = JudgeLevel(PlayBoard(level.record), options.randomPlayers, options.seed + static_cast<std::uint64_t>(index));
            return level;
        }
        return std::nullopt;
    };
    std::vector<MadeLevel> made;
    for (int c = 0; c < entry.candidates; ++c)
        if (auto level = design(c)) made.push_back(*level);
    if (made.empty()) throw std::runtime_error("no design found for level " + std::to_string(index + 1));
    // Most forgiving first; a friendly level takes the first, a hard one the last.
    std::stable_sort(made.begin(), made.end(), [&](const MadeLevel& a, const MadeLevel& b) {
        return Friendliness(a.judgement) > Friendliness(b.judgement);
    });
    // A moderate level is the least forgiving one that the greedy player still clears.
    std::size_t pick = entry.mood == Mood::Hard ? made.size() - 1 : 0;
    if (entry.mood == Mood::Moderate)
        for (std::size_t i = 0; i < made.size(); ++i)
            if (made[i].judgement.greedyClears) pick = i;
    const int candidates = static_cast<int>(made.size());
    if (options.proveStates > 0) {
        // The level shipped must be one the solver clears on its own, as `tolva2-cli levels
        // solve` does it for this level. The judges rate most candidates of a hard level
        // alike (no careless player clears any of them), so the choice among those is
        // free: the candidates are tried from the one the mood picked outwards, nearest in
        // friendliness first, and then a few more designs if none of them is proven.
        const double wanted = Friendliness(made[pick].judgement);
        std::vector<std::size_t> order(made.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            if ((a == pick) != (b == pick)) return a == pick;
            return std::abs(Friendliness(made[a].judgement) - wanted) < std::abs(Friendliness(made[b].judgement) - wanted);
        });
        auto proven = [&](const MadeLevel& level) { return ProvenBySolver(level.record, index + 1, options.proveStates); };
        std::optional<MadeLevel> chosen;
        for (std::size_t i : order)
            if (proven(made[i])) {
                chosen = made[i];
                break;
            }
        for (int c = entry.candidates; !chosen && c < entry.candidates * (1 + ExtraDesignRounds); ++c)
            if (auto level = design(c); level && proven(*level)) chosen = *level;
        if (!chosen)
            throw std::runtime_error("no design of level " + std::to_string(index + 1) + " was cleared by the solver");
        chosen->candidatesMade = candidates;
        return *chosen;
    }
    MadeLevel chosen = made[pick];
    chosen.candidatesMade = candidates;
    return chosen;
}

std::vector<MadeLevel> MakeSet(const SetPlan& plan, const MakeOptions& options) {
    const int count = static_cast<int>(plan.levels.size());
    std::vector<MadeLevel> levels(static_cast<std::size_t>(count));
    std::atomic<int> next{0};
    std::mutex reportLock;
    std::exception_ptr failure;
    auto worker = [&] {
        for (int i = next++; i < count; i = next++) {
            try {
                levels[static_cast<std::size_t>(i)] = MakeLevel(plan, i, options);
                std::lock_guard<std::mutex> lock(reportLock);
                if (options.progress) options.progress(i + 1, levels[static_cast<std::size_t>(i)]);
            } catch (...) {
                std::lock_guard<std::mutex> lock(reportLock);
                failure = std::current_exception();
            }
        }
    };
    std::vector<std::thread> threads;
    for (int j = 1; j < std::max(1, options.jobs); ++j) threads.emplace_back(worker);
    worker();
    for (auto& t : threads) t.join();
    if (failure) std::rethrow_exception(failure);
    return levels;
}

} // namespace tolva::levelgen
