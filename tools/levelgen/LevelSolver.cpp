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

// How many partial lines the mending stage keeps to mend.
constexpr std::size_t KeptLines = 6;
// The most of the budget that one pass after the widening phase may take.
constexpr double PassShare = 0.15;

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
    Group group;   // the group its click takes
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
    BeamSearch(const SolveOptions& options, Clock::time_point until)
        : weights(options.weights), endWeights(options.weights), deadline(until),
          stateCap(options.maxStates > 0 ? options.maxStates : ~std::uint64_t{0}), rng(options.seed),
          endgame(endgameStates, endWeights) {}

    // True once the pass's time or the search's count of boards is used up.
    bool Spent(const SolveResult& result) const { return result.states >= stateCap || Clock::now() > deadline; }

    // One pass at the given width from `from`, ending at `until` at the latest. Gives
    // true and fills `result` on a clear, its clicks counted from `from`. Either way
    // `line` is left holding the clicks from `from` to the board nearest a clear at the
    // deepest point the pass reached, and `lineEnd` that board.
    bool Run(const PlayBoard& from, int width, const Weights& passWeights, const Style& style, Clock::time_point until,
             SolveResult& result);
    PassReport report;
    std::vector<Cell> line;
    PlayBoard lineEnd;

private:
    bool Expand(const std::vector<PlayBoard>& states, std::vector<Candidate>& next, SolveResult& result,
                const std::vector<std::vector<Step>>& trail);
    bool Keep(const std::vector<PlayBoard>& states, std::vector<Candidate>& next, int width,
              std::vector<PlayBoard>& kept, std::vector<Step>& steps, std::vector<ColumnParts>& keptParts);
    std::vector<Cell> Path(const std::vector<std::vector<Step>>& trail, int index, Cell last) const;
    // The clicks to state `index` of depth `depth` (trail[depth - 1] made it).
    std::vector<Cell> PathTo(const std::vector<std::vector<Step>>& trail, std::size_t depth, int index) const;

    bool TryEndgame(const std::vector<PlayBoard>& states, const std::vector<std::vector<Step>>& trail,
                    SolveResult& result);

    Weights weights;              // of the pass under way
    const Weights endWeights;     // of the endgame, the same in every pass
    Clock::time_point deadline;
    const std::uint64_t stateCap;
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

bool BeamSearch::Run(const PlayBoard& from, int width, const Weights& passWeights, const Style& passStyle,
                     Clock::time_point until, SolveResult& result) {
    weights = passWeights;
    style = passStyle;
    deadline = until;
    const int widening = style.widening;
    std::vector<PlayBoard> states{from};
    stateParts.clear();
    std::vector<std::vector<Step>> trail;   // trail[d][i]: how state i of depth d + 1 came about
    std::vector<Candidate> next;
    const int startCells = from.Occupied();
    report = PassReport{.width = width, .depth = 0, .fewestCells = startCells};
    // The deepest depth with boards and, there, the board of fewest cells (the first such
    // in the beam's order, so the best by the estimate among them).
    std::size_t lineDepth = 0;
    int lineIndex = 0;
    auto keepLine = [&] {
        line = PathTo(trail, lineDepth, lineIndex);
        lineEnd = lineDepth == 0 ? from : states[static_cast<std::size_t>(lineIndex)];
    };
    bool cut = false;   // some board was left out for want of width
    while (!states.empty()) {
        report.depth = static_cast<int>(trail.size());
        int fewest = startCells + 1;
        for (std::size_t i = 0; i < states.size(); ++i) {
            const int cells = states[i].Occupied();
            report.fewestCells = std::min(report.fewestCells, cells);
            if (cells < fewest) {
                fewest = cells;
                lineIndex = static_cast<int>(i);
            }
        }
        lineDepth = trail.size();
        if (Spent(result)) {
            keepLine();
            return false;
        }
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
        if (kept.empty()) {
            keepLine();
            break;
        }
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
        const PlayBoard& parent = states[static_cast<std::size_t>(c.parent)];
        PlayBoard child = parent;
        child.Click(c.group.at.x, c.group.at.y);
        if (!seen.insert(child.Hash()).second) continue;
        kept.push_back(child);
        keptParts.emplace_back();
        if (stateParts.empty()) MeasureBoard(child, keptParts.back());
        else MeasureChild(parent, stateParts[static_cast<std::size_t>(c.parent)], child, c.group, keptParts.back());
        steps.push_back(Step{c.parent, c.group.at});
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
            next.push_back(Candidate{score, static_cast<int>(i), g});
        }
        if ((i & 7) == 7 && Spent(result)) return false;
    }
    return false;
}

// Hands each small board of the depth, once per search, to the exhaustive endgame.
bool BeamSearch::TryEndgame(const std::vector<PlayBoard>& states, const std::vector<std::vector<Step>>& trail,
                            SolveResult& result) {
    std::vector<Cell> tail;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i].Occupied() > EndgameCells || !triedEnds.insert(states[i].Hash()).second) continue;
        if (Spent(result)) return false;
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

std::vector<Cell> BeamSearch::PathTo(const std::vector<std::vector<Step>>& trail, std::size_t depth, int index) const {
    std::vector<Cell> path;
    for (std::size_t d = depth; d-- > 0;) {
        const Step& s = trail[d][static_cast<std::size_t>(index)];
        path.push_back(s.click);
        index = s.parent;
    }
    std::reverse(path.begin(), path.end());
    return path;
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
// of 8 up to `widest`. (Among such passes on the largest default levels, those that
// widen, and those that prefer the tops, ended with the fewest cells left; sparing the
// commonest colour did as well as sparing none, and sparing a colour fixed at the start
// worse.)
struct VariedPass {
    int width;
    Weights weights;
    Style style;
};

VariedPass MakeVariedPass(std::mt19937_64& rng, const SolveOptions& options, int widest) {
    VariedPass pass;
    std::normal_distribution<double> jitter(0.0, 0.3);
    pass.weights = options.weights;
    for (double* w : {&pass.weights.group, &pass.weights.inColumn, &pass.weights.beside, &pass.weights.far,
                      &pass.weights.cell, &pass.weights.colour, &pass.weights.distance})
        *w *= std::exp(jitter(rng));
    pass.style.sparePenalty = (rng() & 1) ? 1.0 + static_cast<double>(rng() % 5) : 0.0;
    pass.style.widening = MaxWidening;
    pass.style.depthWeight = 0.1 * static_cast<double>(1 + rng() % 2);
    int steps = 1;
    while ((8 << steps) <= widest) ++steps;
    const int width = 8 << (rng() % static_cast<unsigned>(steps));
    pass.width = std::clamp(width, std::max(1, options.firstWidth), std::max(1, options.maxWidth));
    return pass;
}

// A partial line the mending stage may take up again: the clicks from the start to the
// board nearest a clear that some pass reached.
struct Line {
    std::vector<Cell> clicks;
    int cellsLeft = 0;
    double estimate = 0;
    std::uint64_t end = 0;   // the end board's hash, so that one end is kept once
    int mended = 0;          // passes started from it that got no further
};

bool Nearer(const Line& a, const Line& b) {
    return a.cellsLeft != b.cellsLeft ? a.cellsLeft < b.cellsLeft : a.estimate < b.estimate;
}

// The lines the mending stage works on: the best few that any pass reached.
class LinePool {
public:
    // Keeps the line if it ends on a board not kept yet and nearer a clear than the
    // worst kept line.
    void Offer(Line line) {
        for (const Line& l : lines)
            if (l.end == line.end) return;
        if (lines.size() < KeptLines) {
            lines.push_back(std::move(line));
            return;
        }
        auto worst = std::max_element(lines.begin(), lines.end(), Nearer);
        if (Nearer(line, *worst)) *worst = std::move(line);
    }
    bool Empty() const { return lines.empty(); }
    // One line to mend: the nearer a clear, the likelier.
    Line& Pick(std::mt19937_64& rng) {
        std::sort(lines.begin(), lines.end(), Nearer);
        // Rank r of n is taken with a weight of n - r.
        const std::size_t n = lines.size();
        std::size_t roll = rng() % (n * (n + 1) / 2);
        for (std::size_t r = 0; r < n; ++r) {
            if (roll < n - r) return lines[r];
            roll -= n - r;
        }
        return lines.front();
    }

private:
    std::vector<Line> lines;
};

Line MakeLine(std::vector<Cell> clicks, const PlayBoard& end) {
    Line line;
    line.clicks = std::move(clicks);
    const BoardFeatures f = MeasureBoard(end);
    line.cellsLeft = f.occupied;
    line.estimate = f.Estimate();
    line.end = end.Hash();
    return line;
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
    const auto began = Clock::now();
    auto after = [&](double share) {
        return began + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds * share));
    };
    const auto deadline = after(1.0);
    auto capped = [&] { return options.maxStates > 0 && result.states >= options.maxStates; };
    const auto wideningEnd = after(std::clamp(options.wideningShare, 0.0, 1.0));
    BeamSearch search(options, deadline);
    LinePool pool;
    bool exhausted = false;   // a pass from the start left out no board, so no clear exists
    // One pass from the board that `prefix` (clicks from the start) leads to; its line
    // is offered to the pool.
    auto pass = [&](const std::vector<Cell>& prefix, const PlayBoard& from, int width, const Weights& weights,
                    const Style& style, Clock::time_point until) {
        if (search.Run(from, width, weights, style, until, result)) {
            result.solved = true;
            result.width = width;
            result.from = static_cast<int>(prefix.size());
            result.clicks.insert(result.clicks.begin(), prefix.begin(), prefix.end());
            return;
        }
        search.report.from = static_cast<int>(prefix.size());
        if (options.onPass) options.onPass(search.report);
        exhausted = exhausted || (prefix.empty() && search.report.exhaustive);
        std::vector<Cell> clicks = prefix;
        clicks.insert(clicks.end(), search.line.begin(), search.line.end());
        pool.Offer(MakeLine(std::move(clicks), search.lineEnd));
    };
    // Most levels clear in the widening passes, most of them at a narrow beam. The first
    // pass runs to its end whatever the share, so that there is a line to mend.
    bool over = false;
    const std::vector<Cell> none;
    for (int width = std::max(1, options.firstWidth); width <= options.maxWidth && !over; width *= 2) {
        for (const Style& style : Styles) {
            Weights weights = options.weights;
            weights.distance *= style.distanceFactor;
            pass(none, start, width, weights, style, pool.Empty() ? deadline : wideningEnd);
            if (result.solved || exhausted) return result;
            over = Clock::now() > wideningEnd || capped();
            if (over) break;
        }
    }
    // A level they miss at one width they tend to miss at every width: their beams end
    // a few dozen cells short however wide they are, and where they end varies more
    // with the weights than with the width. The rest of the budget goes mostly to
    // mending (SolveOptions::mendingShare of the time): a pass from a point part way
    // along one of the best lines so far, so that a line that went wrong late is taken
    // up again where it still stood well. The rest goes to passes from the start that
    // each search their own way, for new lines.
    std::mt19937_64 rng(options.seed);
    const double mendingShare = std::clamp(options.mendingShare, 0.0, 1.0);
    Clock::duration mending{}, varied{};
    while (Clock::now() < deadline && !capped()) {
        const auto passBegan = Clock::now();
        // No one pass may take more than a share of the budget: on the largest levels a
        // wide pass from far back could otherwise take half of it for one chance.
        const auto passEnd = std::min(deadline, passBegan + (after(PassShare) - began));
        const double total = std::chrono::duration<double>(mending + varied).count();
        const bool mend = !pool.Empty() && (mendingShare >= 1.0 ||
                          (mendingShare > 0 && std::chrono::duration<double>(mending).count() <= mendingShare * total));
        if (mend) {
            Line& line = pool.Pick(rng);
            // Cut between 20% and 75% of its length (on the largest levels the mended
            // lines that cleared were mostly cut between a quarter and three fifths of
            // the way); a line whose mending keeps failing is cut nearer its start, since
            // what went wrong may lie further back.
            const double back = std::min(line.mended, 5) * 0.04;
            std::uniform_real_distribution<double> share(0.2 - back, 0.75 - back);
            const auto cutAt = static_cast<std::size_t>(std::clamp(share(rng), 0.0, 1.0) *
                                                        static_cast<double>(line.clicks.size()));
            std::vector<Cell> prefix(line.clicks.begin(), line.clicks.begin() + static_cast<std::ptrdiff_t>(cutAt));
            ++line.mended;   // a line this pass gets further with is kept as a new one
            PlayBoard from = start;
            for (const Cell& c : prefix) from.Click(c.x, c.y);
            const VariedPass p = MakeVariedPass(rng, options, 64);
            pass(prefix, from, p.width, p.weights, p.style, passEnd);
            if (result.solved || exhausted) return result;
            mending += Clock::now() - passBegan;
        } else {
            const VariedPass p = MakeVariedPass(rng, options, 16);
            pass(none, start, p.width, p.weights, p.style, passEnd);
            if (result.solved || exhausted) return result;
            varied += Clock::now() - passBegan;
        }
    }
    return result;
}

} // namespace tolva::levelgen
