#include "LevelSolver.h"

#include "BoardFeatures.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
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

// Boards of at most this many cells go to the exhaustive endgame, with this many
// boards looked at before it gives up on one.
constexpr int EndgameCells = 40;
constexpr int EndgameNodes = 2000;
// The most the beam widens towards the end, in the passes that widen.
constexpr int MaxWidening = 16;

// The first share of the budget goes to the widening passes, the rest to varied ones.
constexpr double WideningShare = 0.8;

// How one pass searches. Which of them clears a large level first varies from level
// to level, and a pass that misses tends to miss at every width, so each width is tried
// in every style in turn: the plain beam, the beam that widens as the boards shrink,
// and the widening beam that weighs the distance of lone bricks from their colour
// twice as much.
struct Style {
    double distanceFactor = 1.0;
    int widening = 1;
    // A click on the commonest colour of the board it is made on costs this much more
    // while other colours are left: that colour's bricks then mostly stay on the board
    // and run together as the others go, to be cleared in a few large groups at the end
    // instead of being broken up early into pieces that strand.
    double sparePenalty = 0;
    // A click costs this much more for each brick above the group's top in its column:
    // taking groups from the tops of the columns leaves what lies under them together.
    double depthWeight = 0;
};
constexpr Style Styles[] = {{1.0, 1}, {1.0, MaxWidening}, {2.0, MaxWidening}};

struct Step {
    int parent;   // index in the previous depth's states
    Cell click;
};

struct Candidate {
    double score;
    int parent;
    Cell click;
};

// Exhaustive depth-first search of a small board, for the end of the beam: there the
// estimate knows too little, and a board of a few dozen cells has few enough orders to
// try them all. Boards proven unclearable are remembered across calls, so that the
// beam's many near-equal end states are not searched twice.
class Endgame {
public:
    Endgame(std::uint64_t& counter, const Weights& w) : states(counter), weights(w) {}
    // True and the clicks on a clear; false when none exists or `nodes` ran out.
    bool Solve(const PlayBoard& board, int nodes, std::vector<Cell>& clicks) {
        budget = nodes;
        clicks.clear();
        return Search(board, clicks);
    }

private:
    bool Search(const PlayBoard& board, std::vector<Cell>& clicks) {
        const std::uint64_t key = board.Hash();
        if (dead.count(key)) return false;
        std::vector<Group> moves;
        board.FindGroups(moves);
        struct Option { double score; PlayBoard child; Cell at; };
        std::vector<Option> options;
        options.reserve(moves.size());
        for (const auto& g : moves) {
            if (--budget < 0) return false;
            ++states;
            PlayBoard child = board;
            child.Click(g.at.x, g.at.y);
            const BoardFeatures f = MeasureBoard(child);
            if (f.occupied == 0) {
                clicks.push_back(g.at);
                return true;
            }
            if (!f.dead) options.push_back(Option{f.Estimate(weights), child, g.at});
        }
        std::sort(options.begin(), options.end(), [](const Option& a, const Option& b) { return a.score < b.score; });
        for (const auto& o : options) {
            clicks.push_back(o.at);
            if (Search(o.child, clicks)) return true;
            clicks.pop_back();
            if (budget < 0) return false;   // not proven either way
        }
        dead.insert(key);
        return false;
    }

    std::uint64_t& states;
    const Weights& weights;
    int budget = 0;
    std::unordered_set<std::uint64_t> dead;
};

class BeamSearch {
public:
    BeamSearch(const PlayBoard& from, const SolveOptions& options, Clock::time_point until)
        : start(from), weights(options.weights), endWeights(options.weights), deadline(until), rng(options.seed), endgame(endgameStates, endWeights) {}

    // One pass at the given width, ending at `until` at the latest. Gives true and fills
    // `result` on a clear.
    bool Run(int width, const Weights& passWeights, const Style& style, Clock::time_point until, SolveResult& result);
    PassReport report;

private:
    bool Expand(const std::vector<PlayBoard>& states, std::vector<Candidate>& next, SolveResult& result,
                const std::vector<std::vector<Step>>& trail);
    bool Keep(const std::vector<PlayBoard>& states, std::vector<Candidate>& next, int width,
              std::vector<PlayBoard>& kept, std::vector<Step>& steps, std::vector<ColumnParts>& keptParts);
    std::vector<Cell> Path(const std::vector<std::vector<Step>>& trail, int index, Cell last) const;

    bool TryEndgame(const std::vector<PlayBoard>& states, const std::vector<std::vector<Step>>& trail,
                    SolveResult& result);

    const PlayBoard& start;
    Weights weights;              // of the pass under way
    const Weights endWeights;     // of the endgame, the same in every pass
    Clock::time_point deadline;
    std::mt19937_64 rng;
    std::uint64_t endgameStates = 0;
    Endgame endgame;
    std::unordered_set<std::uint64_t> triedEnds;
    // The column shares of each state of the depth, so that a child is measured by the
    // columns its click changed. Empty at the start, whose board has not fallen yet.
    std::vector<ColumnParts> stateParts;
    ColumnParts childParts;
    std::vector<Group> groups;
    Style style;
};

bool BeamSearch::Run(int width, const Weights& passWeights, const Style& passStyle, Clock::time_point until,
                     SolveResult& result) {
    weights = passWeights;
    style = passStyle;
    deadline = until;
    const int widening = style.widening;
    std::vector<PlayBoard> states{start};
    stateParts.clear();
    std::vector<std::vector<Step>> trail;   // trail[d][i]: how state i of depth d + 1 came about
    std::vector<Candidate> next;
    const int startCells = start.Occupied();
    report = PassReport{width, 0, startCells};
    bool cut = false;   // some board was left out for want of width
    while (!states.empty()) {
        if (Clock::now() > deadline) return false;
        report.depth = static_cast<int>(trail.size());
        for (const PlayBoard& s : states) report.fewestCells = std::min(report.fewestCells, s.Occupied());
        next.clear();
        if (Expand(states, next, result, trail)) return true;
        std::vector<PlayBoard> kept;
        std::vector<Step> steps;
        std::vector<ColumnParts> keptParts;
        // A board of fewer cells is cheaper to look at and nearer the end, where the
        // estimate knows least: the beam widens as the boards shrink, up to 16 times.
        const int cells = std::max(1, report.fewestCells);
        const int grow = std::clamp(startCells / cells, 1, widening);
        cut = Keep(states, next, width * grow, kept, steps, keptParts) || cut;
        stateParts = std::move(keptParts);
        trail.push_back(std::move(steps));
        if (TryEndgame(kept, trail, result)) return true;
        states = std::move(kept);
    }
    report.exhaustive = !cut;
    return false;
}

// The best `width` children by score, each distinct board once. True when some may
// have been left out.
bool BeamSearch::Keep(const std::vector<PlayBoard>& states, std::vector<Candidate>& next, int width,
                      std::vector<PlayBoard>& kept, std::vector<Step>& steps, std::vector<ColumnParts>& keptParts) {
    auto better = [](const Candidate& a, const Candidate& b) { return a.score < b.score; };
    const std::size_t look = std::min(next.size(), static_cast<std::size_t>(width) * 2 + 16);
    std::partial_sort(next.begin(), next.begin() + static_cast<std::ptrdiff_t>(look), next.end(), better);
    std::unordered_set<std::uint64_t> seen;
    std::size_t k = 0;
    for (; k < next.size() && static_cast<int>(kept.size()) < width; ++k) {
        if (k == look) {   // many repeats: sort the rest as well
            std::sort(next.begin() + static_cast<std::ptrdiff_t>(look), next.end(), better);
        }
        const Candidate& c = next[k];
        PlayBoard child = states[static_cast<std::size_t>(c.parent)];
        child.Click(c.click.x, c.click.y);
        if (!seen.insert(child.Hash()).second) continue;
        kept.push_back(child);
        keptParts.emplace_back();
        MeasureBoard(child, keptParts.back());
        steps.push_back(Step{c.parent, c.click});
    }
    return k < next.size();   // (the rest may be boards already kept: a cheap, safe answer)
}

bool BeamSearch::Expand(const std::vector<PlayBoard>& states, std::vector<Candidate>& next,
                        SolveResult& result, const std::vector<std::vector<Step>>& trail) {
    std::uniform_real_distribution<double> noise(0.0, 0.25);
    for (std::size_t i = 0; i < states.size(); ++i) {
        const PlayBoard& parent = states[i];
        parent.FindGroups(groups);
        std::array<int, 11> counts{};   // of the parent, for a pass that spares its commonest colour
        int spared = -1;
        if (style.sparePenalty > 0) {
            if (stateParts.empty()) {
                const auto all = parent.ValueCounts();
                std::copy_n(all.begin(), counts.size(), counts.begin());
            } else {
                counts = stateParts[i].counts;
            }
            spared = static_cast<int>(std::max_element(counts.begin(), counts.end()) - counts.begin());
        }
        for (const auto& g : groups) {
            PlayBoard child = states[i];
            child.Click(g.at.x, g.at.y);
            ++result.states;
            const BoardFeatures f = stateParts.empty() ? MeasureBoard(child)
                                                       : MeasureChild(states[i], stateParts[i], child, g, childParts);
            if (f.occupied == 0) {
                result.clicks = Path(trail, static_cast<int>(i), g.at);
                return true;
            }
            if (f.dead) continue;
            double score = f.Estimate(weights) + noise(rng);
            if (g.value == spared) {
                const bool sparedLeft = g.size < counts[static_cast<std::size_t>(spared)];
                if (f.coloursLeft > (sparedLeft ? 1 : 0)) score += style.sparePenalty;
            }
            if (style.depthWeight > 0) {
                // g.at is the group's top cell in its leftmost column.
                int top = g.at.y;
                while (top > 0 && parent.Brick(g.at.x, top - 1) >= 0) --top;
                score += style.depthWeight * (g.at.y - top);
            }
            next.push_back(Candidate{score, static_cast<int>(i), g.at});
        }
        if ((i & 7) == 7 && Clock::now() > deadline) return false;
    }
    return false;
}

// Hands each small board of the depth, once per search, to the exhaustive endgame.
bool BeamSearch::TryEndgame(const std::vector<PlayBoard>& states, const std::vector<std::vector<Step>>& trail,
                            SolveResult& result) {
    std::vector<Cell> tail;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i].Occupied() > EndgameCells || !triedEnds.insert(states[i].Hash()).second) continue;
        if (Clock::now() > deadline) return false;
        const bool solved = endgame.Solve(states[i], EndgameNodes, tail);
        result.states += endgameStates;
        endgameStates = 0;
        if (!solved) continue;
        const Step& last = trail.back()[i];
        result.clicks = Path(std::vector<std::vector<Step>>(trail.begin(), trail.end() - 1), last.parent, last.click);
        result.clicks.insert(result.clicks.end(), tail.begin(), tail.end());
        return true;
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

// A varied pass: the weights each scaled by a random factor around 1, the commonest
// colour spared or not, the tops of the columns preferred more or less, a widening beam
// of 8 to 32. (Among such passes on the largest default levels, those that widen, and
// those that prefer the tops, ended with the fewest cells left; sparing the commonest
// colour did as well as sparing none, and sparing a colour fixed at the start worse.)
struct VariedPass {
    int width;
    Weights weights;
    Style style;
};

VariedPass MakeVariedPass(std::mt19937_64& rng, const SolveOptions& options) {
    VariedPass pass;
    std::normal_distribution<double> jitter(0.0, 0.3);
    pass.weights = options.weights;
    for (double* w : {&pass.weights.group, &pass.weights.inColumn, &pass.weights.beside, &pass.weights.far,
                      &pass.weights.cell, &pass.weights.colour, &pass.weights.distance})
        *w *= std::exp(jitter(rng));
    pass.style.sparePenalty = (rng() & 1) ? 1.0 + static_cast<double>(rng() % 5) : 0.0;
    pass.style.widening = MaxWidening;
    pass.style.depthWeight = 0.1 * static_cast<double>(1 + rng() % 2);
    const int width = 8 << (rng() % 3);
    pass.width = std::clamp(width, std::max(1, options.firstWidth), std::max(1, options.maxWidth));
    return pass;
}

} // namespace

SolveResult SolveLevel(const PlayBoard& start, const SolveOptions& options) {
    SolveResult result;
    if (start.Cleared()) {
        result.solved = true;
        return result;
    }
    if (HasStrandedBrick(start)) return result;
    // A budget beyond what the clock can count is cut to about three years; one of 0 or
    // below, or not a number, leaves no time.
    const double seconds = options.seconds > 0 ? std::min(options.seconds, MaxSolveSeconds) : 0.0;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                             std::chrono::duration<double>(seconds));
    const auto wideningEnd = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                std::chrono::duration<double>(seconds * WideningShare));
    BeamSearch search(start, options, deadline);
    bool exhausted = false;   // a pass left out no board, so no clear exists
    auto pass = [&](int width, const Weights& weights, const Style& style, Clock::time_point until) {
        if (search.Run(width, weights, style, until, result)) {
            result.solved = true;
            result.width = width;
            return true;
        }
        if (options.onPass) options.onPass(search.report);
        exhausted = exhausted || search.report.exhaustive;
        return false;
    };
    // Most levels clear in the widening passes, most of them at a narrow beam.
    bool over = false;
    for (int width = std::max(1, options.firstWidth); width <= options.maxWidth && !over; width *= 2) {
        for (const Style& style : Styles) {
            Weights weights = options.weights;
            weights.distance *= style.distanceFactor;
            if (pass(width, weights, style, wideningEnd)) return result;
            if (exhausted) return result;
            over = Clock::now() > wideningEnd;
            if (over) break;
        }
    }
    // A level they miss at one width they tend to miss at every width: their beams end
    // a few dozen cells short however wide they are, and where they end varies more
    // with the weights than with the width. The rest of the budget goes to many
    // narrower passes each searching its own way.
    std::mt19937_64 rng(options.seed);
    while (Clock::now() < deadline) {
        const VariedPass varied = MakeVariedPass(rng, options);
        if (pass(varied.width, varied.weights, varied.style, deadline) || exhausted) return result;
    }
    return result;
}

} // namespace tolva::levelgen
