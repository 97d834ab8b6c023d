#include "session/SavedGame.h"

#include "session/LevelCodes.h"
#include "support/ZenkorModule.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <vector>

namespace tolva {
namespace {

// The Crypter key of the file: within the keys whose output never holds a byte that
// means something in an ini file.
constexpr std::int32_t SaveKey = 83;
constexpr const char* Section = "SAVEDGAME";
constexpr const char* Version = "1";
// A 40 x 40 save is about 14 KB; anything much larger is not one.
constexpr std::size_t MaxFileBytes = 64 * 1024;
// The highest score a game can reach is far below this; a value above it was not saved.
constexpr double MaxScore = 1e15;

std::uint64_t Fnv1a(const std::string& text) {
    std::uint64_t hash = 14695981039346656037ull;
    for (unsigned char c : text) {
        hash ^= c;
        hash *= 1099511628211ull;
    }
    return hash;
}

template <typename T, std::size_t N>
std::string JoinNumbers(const std::array<T, N>& values) {
    std::string text;
    for (std::size_t i = 0; i < N; ++i) text += (i ? "," : "") + std::to_string(values[i]);
    return text;
}

std::string JoinGrid(const CellGrid& grid, int side) {
    // The grids are 40 x 40 whatever side a damaged state names.
    side = std::clamp(side, 0, MaxBricks);
    std::string text;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) text += (x || y ? "," : "") + std::to_string(grid(x, y));
    return text;
}

// The whole numbers of a comma-separated text, each within [low, high]; nullopt if any
// is not, or if there are not exactly `count`.
std::optional<std::vector<int>> SplitNumbers(const std::string& text, std::size_t count, int low, int high) {
    std::vector<int> numbers;
    const char* at = text.data();
    const char* end = text.data() + text.size();
    for (;;) {
        int value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc() || value < low || value > high) return std::nullopt;
        numbers.push_back(value);
        if (numbers.size() > count) return std::nullopt;
        at = next;
        if (at == end) break;
        if (*at != ',') return std::nullopt;
        ++at;
    }
    if (numbers.size() != count) return std::nullopt;
    return numbers;
}

std::optional<int> OneNumber(const std::map<std::string, std::string>& values, const char* key, int low, int high) {
    const auto it = values.find(key);
    if (it == values.end()) return std::nullopt;
    const auto numbers = SplitNumbers(it->second, 1, low, high);
    if (!numbers) return std::nullopt;
    return numbers->front();
}

// The lines of the section in the order they are written and checked.
std::vector<std::pair<std::string, std::string>> Values(const SavedGame& game) {
    const PlayState& p = game.Play;
    return {
        {"VERSION", Version},
        {"SET", game.LevelSetPath},
        {"LEVEL", std::to_string(p.Level)},
        {"LEVELCODE", game.LevelCode},
        {"SIDE", std::to_string(p.Side)},
        {"BRICKS", JoinGrid(p.Bricks, p.Side)},
        {"SPELLS", JoinGrid(p.Spells, p.Side)},
        {"SCORE", NumberText(p.Score)},
        {"STOCK", JoinNumbers(p.SpellStock)},
        {"SPELLCLICKS", JoinNumbers(p.SpellClicks)},
        {"LEVELCLICKS", std::to_string(p.LevelClicks)},
        {"LASTCLICKCOUNT", std::to_string(p.LastClickCount)},
        {"BONUSTIMES", std::to_string(p.BonusTimes)},
        {"CHEAT", p.CheatMode ? "1" : "0"},
        {"FROZEN", p.ScoreFrozen ? "1" : "0"},
        {"PRACTICE", p.Practice ? "1" : "0"},
    };
}

std::string CheckedText(const std::vector<std::pair<std::string, std::string>>& values) {
    std::string text;
    for (const auto& [key, value] : values) text += key + "=" + value + "\n";
    return text;
}

} // namespace

std::string SavedGame::FileBytes() const {
    const auto values = Values(*this);
    std::string file = EncryptNumber(std::string("[") + Section + "]", SaveKey) + "\r\n";
    for (const auto& [key, value] : values) file += EncryptNumber(key + "=" + value, SaveKey) + "\r\n";
    file += EncryptNumber("[CHECKSUM]", SaveKey) + "\r\n";
    file += EncryptNumber("VALUE=" + std::to_string(Fnv1a(CheckedText(values))), SaveKey) + "\r\n";
    return file;
}

std::optional<SavedGame> SavedGame::FromBytes(const std::string& bytes) {
    // Every line deciphered, then read as an ini file of two sections.
    std::map<std::string, std::string> values;
    std::vector<std::pair<std::string, std::string>> inOrder;
    std::string section;
    std::string checksum;
    std::size_t at = 0;
    while (at < bytes.size()) {
        std::size_t end = bytes.find("\r\n", at);
        if (end == std::string::npos) end = bytes.size();
        const std::string line = DecryptNumber(bytes.substr(at, end - at), SaveKey);
        at = end + 2;
        if (line.empty()) continue;
        if (line.front() == '[' && line.back() == ']') {
            section = line.substr(1, line.size() - 2);
            continue;
        }
        const std::size_t eq = line.find('=');
        if (eq == std::string::npos) return std::nullopt;
        const std::string key = line.substr(0, eq);
        const std::string value = line.substr(eq + 1);
        if (section == Section) {
            if (!values.emplace(key, value).second) return std::nullopt;
            inOrder.emplace_back(key, value);
        } else if (section == "CHECKSUM" && key == "VALUE") {
            checksum = value;
        } else {
            return std::nullopt;
        }
    }
    if (checksum.empty() || checksum != std::to_string(Fnv1a(CheckedText(inOrder)))) return std::nullopt;
    if (values["VERSION"] != Version) return std::nullopt;

    SavedGame game;
    PlayState& p = game.Play;
    game.LevelSetPath = values["SET"];
    game.LevelCode = values["LEVELCODE"];
    const auto level = OneNumber(values, "LEVEL", 1, MaxLevels);
    const auto side = OneNumber(values, "SIDE", 1, MaxBricks);
    if (game.LevelSetPath.empty() || !level || !side) return std::nullopt;
    p.Level = static_cast<std::int16_t>(*level);
    p.Side = static_cast<std::int16_t>(*side);
    // The code, where there is one, is the level's own.
    if (!game.LevelCode.empty() && game.LevelCode != LevelCodes::CodeOf(p.Level)) return std::nullopt;
    const std::size_t cells = static_cast<std::size_t>(p.Side * p.Side);
    const auto bricks = SplitNumbers(values["BRICKS"], cells, CellEmpty, FirstSpellCell + SpellCount - 1);
    const auto spells = SplitNumbers(values["SPELLS"], cells, NoSpell, SpellCount - 1);
    const auto stock = SplitNumbers(values["STOCK"], p.SpellStock.size(), 0, 32767);
    const auto spellClicks = SplitNumbers(values["SPELLCLICKS"], p.SpellClicks.size(), 0, 32767);
    const auto levelClicks = OneNumber(values, "LEVELCLICKS", 0, 32767);
    const auto lastClicks = OneNumber(values, "LASTCLICKCOUNT", 0, 32767);
    const auto bonusTimes = OneNumber(values, "BONUSTIMES", 0, 9);
    const auto cheat = OneNumber(values, "CHEAT", 0, 1);
    const auto frozen = OneNumber(values, "FROZEN", 0, 1);
    const auto practice = OneNumber(values, "PRACTICE", 0, 1);
    if (!bricks || !spells || !stock || !spellClicks || !levelClicks || !lastClicks || !bonusTimes || !cheat ||
        !frozen || !practice)
        return std::nullopt;
    const std::string& scoreText = values["SCORE"];
    const double score = Val(scoreText);
    if (scoreText.empty() || NumberText(score) != scoreText || !(score >= 0) || score > MaxScore) return std::nullopt;

    p.Bricks.Fill(CellEmpty);
    p.Spells.Fill(NoSpell);
    for (int y = 0; y < p.Side; ++y)
        for (int x = 0; x < p.Side; ++x) {
            const auto i = static_cast<std::size_t>(y * p.Side + x);
            p.Bricks(x, y) = static_cast<std::int16_t>((*bricks)[i]);
            p.Spells(x, y) = static_cast<std::int16_t>((*spells)[i]);
        }
    p.Score = score;
    for (std::size_t i = 0; i < p.SpellStock.size(); ++i) p.SpellStock[i] = static_cast<std::int16_t>((*stock)[i]);
    for (std::size_t i = 0; i < p.SpellClicks.size(); ++i) p.SpellClicks[i] = static_cast<std::int16_t>((*spellClicks)[i]);
    p.LevelClicks = static_cast<std::int16_t>(*levelClicks);
    p.LastClickCount = static_cast<std::int16_t>(*lastClicks);
    p.BonusTimes = static_cast<std::int16_t>(*bonusTimes);
    p.CheatMode = *cheat == 1;
    p.ScoreFrozen = *frozen == 1;
    p.Practice = *practice == 1;
    return game;
}

bool SavedGame::Write(const std::string& path) const { return WriteWholeFile(path, FileBytes()) == 0; }

SavedGame::ReadResult SavedGame::Read(const std::string& path, SavedGame& game) {
    std::string bytes;
    switch (ReadFileWithin(path, bytes, MaxFileBytes)) {
    case FileRead::Ok: break;
    case FileRead::Missing: return ReadResult::Missing;
    default: return ReadResult::Damaged;
    }
    auto read = FromBytes(bytes);
    if (!read) return ReadResult::Damaged;
    game = std::move(*read);
    return ReadResult::Read;
}

} // namespace tolva
