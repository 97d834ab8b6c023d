#pragma once
// Shared fixtures of the board tests: boards written as a few lines of text, a listener
// that writes the 14 events down in order, and a board on the headless platform.
//
// Board text, one character per cell, one string per row from the top:
//   '.' empty (-1)   '0'..'9' a brick of that colour   'X' the reserved value 10
//   'a'..'f' a spell lying on the board (11..16: "BOUNCING SAW" .. "UMBRELLA")
// Spell text, the same shape: '.' no hidden spell, '0'..'5' the spell hidden there.
// The side of the board is the number of rows.
#include "board/BoardListener.h"
#include "shared/LevelModule.h"
#include "board/TolvaBoard.h"
#include "support/ZenkorModule.h"
#include "testsupport/HeadlessPlatform.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tolva::testing {

// Board text, spell text, or a list of events.
using Rows = std::vector<std::string>;

inline std::int16_t CellFromChar(char c) {
    if (c == '.') return CellEmpty;
    if (c == 'X') return ReservedCell;
    if (c >= '0' && c <= '9') return static_cast<std::int16_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::int16_t>(FirstSpellCell + (c - 'a'));
    ADD_FAILURE() << "unknown cell character '" << c << "'";
    return CellEmpty;
}

inline char CharFromCell(std::int16_t v) {
    if (v == CellEmpty) return '.';
    if (v == ReservedCell) return 'X';
    if (v >= 0 && v <= 9) return static_cast<char>('0' + v);
    if (v >= FirstSpellCell && v < FirstSpellCell + SpellCount) return static_cast<char>('a' + (v - FirstSpellCell));
    return '?';
}

// Fills a level record from board text; the side is the number of rows.
inline void FillLevel(LevelRecord& level, const std::string& name, const std::vector<std::string>& rows,
                      const std::vector<std::string>& spells = {}) {
    level = LevelRecord();
    level.LevelName = name;
    level.levelbricks = static_cast<std::int16_t>(rows.size());
    for (std::size_t y = 0; y < rows.size(); ++y)
        for (std::size_t x = 0; x < rows[y].size(); ++x)
            level.BrickGrid(static_cast<int>(x), static_cast<int>(y)) = CellFromChar(rows[y][x]);
    for (std::size_t y = 0; y < spells.size(); ++y)
        for (std::size_t x = 0; x < spells[y].size(); ++x)
            if (spells[y][x] != '.')
                level.SpellGrid(static_cast<int>(x), static_cast<int>(y)) = static_cast<std::int16_t>(spells[y][x] - '0');
}

// Writes every event down as "Name(args)", lets a test act inside a handler, and hands
// each event on to `Next` (the session, say) when there is one.
class RecordingListener final : public BoardListener {
public:
    explicit RecordingListener(BoardListener* next = nullptr) : Next(next) {}
    std::vector<std::string> Log;
    // Called after each event is written down, with its text, before it is handed on.
    std::function<void(const std::string&)> OnEvent;
    BoardListener* Next;

    // The events so far, and a fresh log.
    std::vector<std::string> Take() {
        auto out = std::move(Log);
        Log.clear();
        return out;
    }

    void BricksRemoved(std::int16_t n) override {
        if (Add("BricksRemoved(" + std::to_string(n) + ")")) Next->BricksRemoved(n);
    }
    void MouseMove(std::int16_t x, std::int16_t y) override {
        if (Add("MouseMove(" + std::to_string(x) + "," + std::to_string(y) + ")")) Next->MouseMove(x, y);
    }
    void GameOver() override { if (Add("GameOver")) Next->GameOver(); }
    void NewScore(double p) override { if (Add("NewScore(" + Number(p) + ")")) Next->NewScore(p); }
    void NewSpell(std::int16_t s) override { if (Add("NewSpell(" + std::to_string(s) + ")")) Next->NewSpell(s); }
    void NewLevel(std::int16_t l) override { if (Add("NewLevel(" + std::to_string(l) + ")")) Next->NewLevel(l); }
    void SpellUsed(std::int16_t s) override { if (Add("SpellUsed(" + std::to_string(s) + ")")) Next->SpellUsed(s); }
    void BonusScore(double b, std::int16_t t) override {
        if (Add("BonusScore(" + Number(b) + "," + std::to_string(t) + ")")) Next->BonusScore(b, t);
    }
    void BonusTimes(std::int16_t t) override { if (Add("BonusTimes(" + std::to_string(t) + ")")) Next->BonusTimes(t); }
    void CanDoNextMove() override { if (Add("CanDoNextMove")) Next->CanDoNextMove(); }
    void ResourceLoaded(const std::string& r) override {
        if (Add("ResourceLoaded(" + r + ")")) Next->ResourceLoaded(r);
    }
    void SpellInUse(bool u) override {
        if (Add(std::string("SpellInUse(") + (u ? "true" : "false") + ")")) Next->SpellInUse(u);
    }
    void RemoveClick(std::int16_t l) override {
        if (Add("RemoveClick(" + std::to_string(l) + ")")) Next->RemoveClick(l);
    }
    void SpellClick(std::int16_t s, std::int16_t l) override {
        if (Add("SpellClick(" + std::to_string(s) + "," + std::to_string(l) + ")")) Next->SpellClick(s, l);
    }

private:
    static std::string Number(double v) {
        std::string s = std::to_string(v);
        s.erase(s.find_last_not_of('0') + 1);
        if (!s.empty() && s.back() == '.') s.pop_back();
        return s;
    }
    // Writes the event down; true when it is to be handed on.
    bool Add(const std::string& e) {
        Log.push_back(e);
        if (OnEvent) OnEvent(e);
        return Next != nullptr;
    }
};

// The board in use as board text.
inline std::vector<std::string> BoardRows(const TolvaBoard& board) {
    std::vector<std::string> rows;
    for (int y = 0; y < board.xBricks(); ++y) {
        std::string row;
        for (int x = 0; x < board.xBricks(); ++x) row += CharFromCell(board.Bricks(x, y));
        rows.push_back(row);
    }
    return rows;
}

// A click in the middle of cell (x, y), by the same road as automatic play.
inline void ClickCell(TolvaBoard& board, int x, int y, std::int16_t button = 1) {
    float fx = static_cast<float>(x), fy = static_cast<float>(y);
    board.ClickOnBrick(fx, fy, button);
}

// The host's parts, with the test's random numbers in place of the seeded ones if given.
inline BoardPlatform WithRandom(HeadlessPlatform& host, Random* rng) {
    BoardPlatform p = host.Platform();
    return rng != nullptr ? BoardPlatform{p.Loop, p.Surface, p.Pictures, p.Sound, p.Dialog, *rng} : p;
}

// The sound files played so far, as named inside the game folder.
inline std::vector<std::string> SoundFiles(const RecordingSoundEffects& sound) {
    std::vector<std::string> out;
    for (const auto& call : sound.Calls()) out.push_back(call.File.substr(AppPath().size()));
    return out;
}

// What a number line of the bonus screen shows, read back from the digit pictures painted
// into it, with the place of each checked against the widths of the pictures before it.
inline std::string ShownDigits(TolvaBoard& board, const PicturePanel& line) {
    std::string text;
    double left = 0;
    for (const auto& piece : line.Pieces()) {
        EXPECT_EQ(piece.Left, left);
        EXPECT_EQ(piece.Top, 0);
        for (int i = 0; i <= 10; ++i)
            if (piece.Picture == &board.No(i)) text += i == 10 ? '.' : static_cast<char>('0' + i);
        left += piece.Picture->ScaleWidth();
    }
    return text;
}

// Random numbers given by the test, one after the other; with Cycle they come round
// again. Drawn counts the numbers drawn.
class SequenceRandom final : public Random {
public:
    std::deque<double> Values;
    bool Cycle = false;
    std::size_t Drawn = 0;
    double Next() override {
        if (Values.empty()) {
            ADD_FAILURE() << "SequenceRandom ran out of values";
            return 0;
        }
        const double v = Values.front();
        Values.pop_front();
        if (Cycle) Values.push_back(v);
        ++Drawn;
        return v;
    }
    void Seed(std::uint64_t) override {}
};

// A board on the headless platform with its own game variables. The level table lives on
// the heap: 100 records of two 40 x 40 grids are too much for a test's stack.
class BoardFixture {
public:
    explicit BoardFixture(Random* rng = nullptr)
        : Game(std::make_unique<LevelModule>()),
          Board(*Game, Settings, WithRandom(Host, rng), Events) {}

    HeadlessPlatform Host;
    GameSettings Settings;
    std::unique_ptr<LevelModule> Game;
    RecordingListener Events;
    TolvaBoard Board;

    // Puts board text into level `number` (1..100).
    void SetLevel(int number, const std::vector<std::string>& rows, const std::vector<std::string>& spells = {}) {
        FillLevel(Game->Levels[static_cast<std::size_t>(number - 1)], "LEVEL " + std::to_string(number), rows, spells);
    }
    // Puts board text into level 1 and starts it; the events of the start are dropped.
    void Start(const std::vector<std::string>& rows, const std::vector<std::string>& spells = {}) {
        SetLevel(1, rows, spells);
        std::int16_t level = 1;
        Board.NewGame(level);
        Events.Take();
        Host.Surface.ClearRecords();
    }
    // The board in use as text.
    std::vector<std::string> Rows() const { return BoardRows(Board); }
    // The hidden spells of the board in use as spell text.
    std::vector<std::string> SpellRows() const {
        std::vector<std::string> rows;
        const int n = Board.xBricks();
        for (int y = 0; y < n; ++y) {
            std::string row;
            for (int x = 0; x < n; ++x) {
                const std::int16_t s = Board.Spells(x, y);
                row += s < 0 ? '.' : static_cast<char>('0' + s);
            }
            rows.push_back(row);
        }
        return rows;
    }
    // A left click in the middle of cell (x, y), by the same road as automatic play.
    void Click(int x, int y, std::int16_t button = 1) { ClickCell(Board, x, y, button); }
    // The cells painted since the last ClearRecords, as "x,y:Picture" in painting order.
    std::vector<std::string> PaintedCells() const {
        std::vector<std::string> out;
        const double w = Host.Surface.ScaleWidth() / Board.xBricks();
        const double h = Host.Surface.ScaleHeight() / Board.xBricks();
        for (const auto& r : Host.Surface.Records()) {
            const int x = static_cast<int>(r.Target.Left / w + 0.5);
            const int y = static_cast<int>(r.Target.Top / h + 0.5);
            out.push_back(std::to_string(x) + "," + std::to_string(y) + ":" + r.Picture);
        }
        return out;
    }

};

} // namespace tolva::testing
