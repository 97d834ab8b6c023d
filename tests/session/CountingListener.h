#pragma once
// Stands between the board and the session: counts every board event on its way to the
// session, and at each level start holds the session's counters against the count. What
// disagrees is written down in Disagreements rather than failed at once, so that a long
// autoplay run reports the first few differences with the level they came at.
#include "board/BoardListener.h"
#include "shared/LevelModule.h"
#include "session/GameSession.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <vector>

namespace tolva::testing {

class CountingListener final : public BoardListener {
public:
    explicit CountingListener(GameSession& session) : session_(session) {}

    // Totals since the listener was made.
    double Points = 0;
    std::array<int, SpellCount> Collected{};
    std::array<int, SpellCount> Used{};
    int Clicks = 0;
    int Moves = 0;
    int GameOvers = 0;
    int Bonuses = 0;
    std::vector<std::int16_t> Levels;   // every level start, in order
    // CanDoNextMove raised while a CanDoNextMove handler runs: moves nesting in moves.
    int MaxMoveDepth = 0;
    // Whether the session's score is expected to follow the points (else to stay at 0).
    bool ScoreCounts = true;
    std::vector<std::string> Disagreements;
    // Runs after the session has handled a level start.
    std::function<void(std::int16_t)> AfterNewLevel;
    // Runs at each CanDoNextMove before the session sees it: a test can stop autoplay there.
    std::function<void()> BeforeNextMove;

    void BricksRemoved(std::int16_t n) override { session_.BricksRemoved(n); }
    void MouseMove(std::int16_t x, std::int16_t y) override { session_.MouseMove(x, y); }
    void GameOver() override {
        ++GameOvers;
        session_.GameOver();
    }
    void NewScore(double p) override {
        Points += p;
        session_.NewScore(p);
    }
    void NewSpell(std::int16_t s) override {
        ++Collected.at(static_cast<std::size_t>(s));
        session_.NewSpell(s);
    }
    void NewLevel(std::int16_t l) override {
        if (!Levels.empty()) CheckLevelLeft();
        Levels.push_back(l);
        session_.NewLevel(l);
        levelClicks_ = 0;
        levelSpellClicks_ = {};
        Expect(session_.LevelClicks == 0, "clicks not reset");
        Expect(session_.SpellClicks == levelSpellClicks_, "spell clicks not reset");
        if (AfterNewLevel) AfterNewLevel(l);
    }
    void SpellUsed(std::int16_t s) override {
        ++Used.at(static_cast<std::size_t>(s));
        session_.SpellUsed(s);
    }
    void BonusScore(double b, std::int16_t t) override {
        ++Bonuses;
        session_.BonusScore(b, t);
    }
    void BonusTimes(std::int16_t t) override { session_.BonusTimes(t); }
    void CanDoNextMove() override {
        ++Moves;
        ++depth_;
        MaxMoveDepth = std::max(MaxMoveDepth, depth_);
        if (BeforeNextMove) BeforeNextMove();
        session_.CanDoNextMove();
        --depth_;
    }
    void ResourceLoaded(const std::string& r) override { session_.ResourceLoaded(r); }
    void SpellInUse(bool u) override { session_.SpellInUse(u); }
    void RemoveClick(std::int16_t l) override {
        ++Clicks;
        ++levelClicks_;
        session_.RemoveClick(l);
        Expect(session_.LevelClicks == levelClicks_, "click count");
    }
    void SpellClick(std::int16_t s, std::int16_t l) override {
        ++levelSpellClicks_.at(static_cast<std::size_t>(s));
        session_.SpellClick(s, l);
    }

private:
    void CheckLevelLeft() {
        Expect(session_.LevelClicks == levelClicks_, "clicks of the level left");
        Expect(session_.SpellClicks == levelSpellClicks_, "spell clicks of the level left");
        Expect(session_.Score == (ScoreCounts ? Points : 0), "score");
        for (std::size_t s = 0; s < Used.size(); ++s)
            Expect(session_.SpellStock[s] == Collected[s] - Used[s], "stock of spell " + std::to_string(s));
    }
    void Expect(bool agrees, const std::string& what) {
        if (!agrees && Disagreements.size() < 10)
            Disagreements.push_back(what + " at level " + (Levels.empty() ? "-" : std::to_string(Levels.back())));
    }

    GameSession& session_;
    int depth_ = 0;
    std::int16_t levelClicks_ = 0;
    std::array<std::int16_t, SpellCount> levelSpellClicks_{};
};

} // namespace tolva::testing
