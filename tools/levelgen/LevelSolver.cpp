#include "LevelSolver.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <unordered_set>

namespace tolva::levelgen {

bool HasStrandedBrick(const PlayBoard& board) {
    const auto counts = board.ValueCounts();
    for (int v = 0; v <= 10; ++v)
        if (counts[static_cast<std::size_t>(v)] == 1) return true;
    return false;
}

bool ReplayClears(const PlayBoard& start, const std::vector<Cell>& clicks, std::size_t* failedAt) {
    PlayBoard board = start;
    for (std::size_t i = 0; i < clicks.size(); ++i) {
        if (board.Click(clicks[i].x, clicks[i].y) == 0) {
            if (failedAt) *failedAt = i;
            return false;
        }
    }
    if (failedAt) *failedAt = clicks.size();
    return board.Cleared();
}

namespace {

using Clock = std::chrono::steady_clock;

// Lower is closer to a clear.
double Estimate(const PlayBoard& board, std::vector<Group>& scratch) {
    int singles = 0;
    board.FindGroups(scratch, &singles);
    return 5.0 * singles + static_cast<double>(scratch.size());
}

struct Step {
    int parent;   // index in the previous depth's states
    Cell click;
};

struct Candidate {
    double score;
    int parent;
    Cell click;
};

class BeamSearch {
public:
    BeamSearch(const PlayBoard& start, const SolveOptions& options, Clock::time_point deadline)
        : start(start), deadline(deadline), rng(options.seed) {}

    // One pass at the given width. Gives true and fills `result` on a clear.
    bool Run(int width, SolveResult& result);

private:
    bool Expand(const std::vector<PlayBoard>& states, std::vector<Candidate>& next, SolveResult& result,
                const std::vector<std::vector<Step>>& trail);
    std::vector<Cell> Path(const std::vector<std::vector<Step>>& trail, int index, Cell last) const;

    const PlayBoard& start;
    Clock::time_point deadline;
    std::mt19937_64 rng;
};

bool BeamSearch::Run(int width, SolveResult& result) {
    std::vector<PlayBoard> states{start};
    std::vector<std::vector<Step>> trail;   // trail[d][i]: how state i of depth d + 1 came about
    std::vector<Candidate> next;
    while (!states.empty()) {
        if (Clock::now() > deadline) return false;
        next.clear();
        if (Expand(states, next, result, trail)) return true;
        std::sort(next.begin(), next.end(), [](const Candidate& a, const Candidate& b) { return a.score < b.score; });
        std::vector<PlayBoard> kept;
        std::vector<Step> steps;
        std::unordered_set<std::uint64_t> seen;
        for (const auto& c : next) {
            if (static_cast<int>(kept.size()) >= width) break;
            PlayBoard child = states[static_cast<std::size_t>(c.parent)];
            child.Click(c.click.x, c.click.y);
            if (!seen.insert(child.Hash()).second) continue;
            kept.push_back(child);
            steps.push_back(Step{c.parent, c.click});
        }
        trail.push_back(std::move(steps));
        states = std::move(kept);
    }
    return false;
}

bool BeamSearch::Expand(const std::vector<PlayBoard>& states, std::vector<Candidate>& next,
                        SolveResult& result, const std::vector<std::vector<Step>>& trail) {
    std::uniform_real_distribution<double> noise(0.0, 0.5);
    std::vector<Group> groups, scratch;
    for (std::size_t i = 0; i < states.size(); ++i) {
        states[i].FindGroups(groups);
        for (const auto& g : groups) {
            PlayBoard child = states[i];
            child.Click(g.at.x, g.at.y);
            ++result.states;
            if (child.Cleared()) {
                result.clicks = Path(trail, static_cast<int>(i), g.at);
                return true;
            }
            if (HasStrandedBrick(child)) continue;
            next.push_back(Candidate{Estimate(child, scratch) + noise(rng), static_cast<int>(i), g.at});
        }
        if ((i & 15) == 15 && Clock::now() > deadline) return false;
    }
    return false;
}

std::vector<Cell> BeamSearch::Path(const std::vector<std::vector<Step>>& trail, int index, Cell last) const {
    std::vector<Cell> path{last};
    for (std::size_t d = trail.size(); d-- > 0;) {
        const Step& s = trail[d][static_cast<std::size_t>(index)];
        path.push_back(s.click);
        index = s.parent;
    }
    std::reverse(path.begin(), path.end());
    return path;
}

} // namespace

SolveResult SolveLevel(const PlayBoard& start, const SolveOptions& options) {
    SolveResult result;
    if (start.Cleared()) {
        result.solved = true;
        return result;
    }
    if (HasStrandedBrick(start)) return result;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                             std::chrono::duration<double>(options.seconds));
    BeamSearch search(start, options, deadline);
    for (int width = std::max(1, options.firstWidth); width <= options.maxWidth; width *= 4) {
        if (search.Run(width, result)) {
            result.solved = true;
            result.width = width;
            return result;
        }
        if (Clock::now() > deadline) break;
    }
    return result;
}

} // namespace tolva::levelgen
