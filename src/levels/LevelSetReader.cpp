#include "levels/LevelSetReader.h"

#include "shared/GameText.h"
#include "support/ZenkorModule.h"

#include <algorithm>
#include <array>
#include <istream>
#include <sstream>
#include <string_view>

namespace tolva {

// The file's lines. A line ends at LF, CR or CR LF. Reading past the end changes
// nothing: the caller's line keeps what it held.
class LevelSetLineSource {
public:
    explicit LevelSetLineSource(std::istream* source) : file(source) {}

    bool HasLines() {
        Fill();
        return pos < size;
    }
    // Reads the next line into `line`; false, with `line` untouched, at the end.
    bool Read(std::string& line) {
        if (!HasLines()) return false;
        line.clear();
        for (;;) {
            Fill();
            if (pos >= size) return true;
            const char* start = buffer.data() + pos;
            const char* stop = start;
            const char* end = buffer.data() + size;
            while (stop < end && *stop != '\n' && *stop != '\r') ++stop;
            line.append(start, stop);
            pos += static_cast<std::size_t>(stop - start);
            if (stop == end) continue;
            const char ending = *stop;
            ++pos;
            if (ending == '\r') {
                Fill();
                if (pos < size && buffer[pos] == '\n') ++pos;
            }
            return true;
        }
    }

private:
    void Fill() {
        if (pos < size || !file || !*file) return;
        file->read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        size = static_cast<std::size_t>(file->gcount());
        pos = 0;
    }

    std::istream* file;
    std::array<char, 65536> buffer{};
    std::size_t pos = 0;
    std::size_t size = 0;
};

namespace {

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

bool StartsWith(const std::string& line, const char* key) {
    const std::string k(key);
    return line.size() >= k.size() && Lower(line.substr(0, k.size())) == k;
}

bool IsSetName(const std::string& line) { return StartsWith(line, "levelset"); }
bool IsLevelHead(const std::string& line) { return StartsWith(line, "[level"); }
bool IsBrickRow(const std::string& line) { return StartsWith(line, "r"); }
bool IsSpellRow(const std::string& line) { return StartsWith(line, "s"); }
bool IsChecksumLine(const std::string& line) { return StartsWith(line, "checksum"); }

// The text behind the first "="; a line without one has nothing behind it.
std::string AfterEquals(const std::string& line) {
    const auto eq = line.find('=');
    return eq == std::string::npos ? std::string() : line.substr(eq + 1);
}

} // namespace


LevelSetReader::LevelSetReader(LevelModule& table, LevelSetHooks* loadHooks) : game(table), hooks(loadHooks) {}

bool LevelSetReader::IsDefault(const std::string& levelSetPath) {
    const std::string path = Lower(levelSetPath);
    auto endsWith = [&](const std::string& tail) {
        return path.size() >= tail.size() && path.compare(path.size() - tail.size(), tail.size(), tail) == 0;
    };
    return endsWith("default") || endsWith("default\\");
}

std::int16_t LevelSetReader::SetKeyFor(const std::string& levelSetPath) {
    return IsDefault(levelSetPath) ? DefaultSetKey : OtherSetKey;
}

LevelSetLoad LevelSetReader::InitLevels() {
    LevelChecksum = 0;
    const std::int16_t setKey = SetKeyFor(LevelSetPath);
    if (hooks) {
        for (int i = 0; i < SpellCount; ++i) hooks->SetSpellName(i, std::string(SpellNameList[static_cast<std::size_t>(i)]));
        hooks->ShowLoading();
        for (int i = 0; i < SpellCount; ++i) {
            hooks->SetLoadingLabel("Levels_tooltip" + std::to_string(i));
            hooks->SetSpellToolTip(i, std::string(SpellNameList[static_cast<std::size_t>(i)]));
        }
        hooks->LoadHiscores(setKey);
        hooks->ClearLevelMenu();
    }
    const std::string setFolder = AppPath() + LevelSetPath;
    // Read whole through the game's file reading: a pipe or a folder of that name is no
    // set, and a file over the bound (a link to an endless one) is a damaged set, which
    // for the default set fails the integrity test like any other damage.
    std::string bytes;
    const FileRead read = ReadFileWithin(setFolder + "levels.set", bytes, MaxLevelSetBytes);
    std::istringstream file(std::move(bytes));
    LevelSetLoad load = Scan(read == FileRead::Ok ? &file : nullptr);
    load.TooLarge = read == FileRead::TooLarge;
    if (load.Integrity == LevelSetIntegrity::Failed) {
        if (hooks) hooks->DefaultSetCorrupted();
        return load;
    }
    if (hooks) hooks->LevelRoot(setFolder);
    return load;
}

LevelSetLoad LevelSetReader::Load(std::istream& file) {
    LevelChecksum = 0;
    return Scan(&file);
}

LevelSetLoad LevelSetReader::Scan(std::istream* file) {
    LevelSetLoad load;
    load.FileFound = file != nullptr;
    load.DefaultSet = IsDefault(LevelSetPath);
    load.SetKey = SetKeyFor(LevelSetPath);
    for (auto& record : game.Levels) record = LevelRecord();
    LevelChecksum = 0;
    line.clear();
    LinePending = false;
    cutSides = 0;

    LevelSetLineSource source(file);
    bool restart = false;   // the current line is a level head met inside a level
    for (;;) {
        if (!restart && !source.Read(line)) break;
        restart = false;
        if (IsSetName(line)) {
            load.SetName = AfterEquals(line);
            load.SetNameFound = true;
            if (hooks) hooks->SetTitle("TOLVA II  -  [" + load.SetName + "]");
        }
        LinePending = false;
        if (!IsLevelHead(line)) continue;
        const int n = ++load.LevelHeads;
        ReadLevel(source, n, restart);
    }
    load.LastLine = line;
    load.LevelChecksum = LevelChecksum;
    load.SidesCut = cutSides;
    CheckIntegrity(load, line);
    return load;
}

// The three positional lines of level `n` and then its rows.
void LevelSetReader::ReadLevel(LevelSetLineSource& source, int n, bool& restart) {
    LevelRecord scratch;
    LevelRecord& record = n <= MaxLevels ? game.Levels[static_cast<std::size_t>(n - 1)] : scratch;
    source.Read(line);
    std::int16_t side = CInt(Val(line.size() > 12 ? line.substr(12) : std::string()));
    // Below 10 is raised to 10; above 40 the grids end, so the board can never be
    // handed a side that it cannot hold.
    record.levelbricks = std::clamp<std::int16_t>(side, 10, MaxBricks);
    if (side > MaxBricks && n <= MaxLevels) ++cutSides;
    source.Read(line);
    if (line.size() >= 15) record.levelgfxfolder = line.substr(15);
    source.Read(line);
    if (line.size() >= 10) record.LevelName = line.substr(10);
    if (hooks) {
        if (n <= MaxLevels) hooks->SetLevelMenuEntry(n - 1, "(" + std::to_string(n) + ") - " + record.LevelName);
        hooks->SetLoadingLabel("Level_" + std::to_string(n));
        hooks->DoEvents();
    }
    ReadRows(source, n, restart);
}

void LevelSetReader::ReadRows(LevelSetLineSource& source, int n, bool& restart) {
    for (int y = 0; y < MaxBricks; ++y) {
        std::string brickText, spellText;
        // Past the end of the file the last line stays; were it a level head, it would
        // start the same level again and again. The file is over, and so is the scan.
        if (!LinePending && !source.Read(line) && IsLevelHead(line)) return;
        if (IsLevelHead(line)) {
            restart = true;
            return;
        }
        if (IsBrickRow(line)) brickText = AfterEquals(line);
        LinePending = false;
        source.Read(line);
        if (IsSpellRow(line)) spellText = AfterEquals(line);
        else LinePending = true;
        if (brickText.empty()) return;
        ParseRow(n, y, brickText, false);
        if (!spellText.empty()) {
            ParseRow(n, y, spellText, true);
        } else if (n <= MaxLevels) {
            LevelRecord& record = game.Levels[static_cast<std::size_t>(n - 1)];
            for (int x = 0; x < record.levelbricks && x < MaxBricks; ++x) record.SpellGrid(x, y) = NoSpell;
        }
    }
}

void LevelSetReader::ParseRow(int Level, int Row, const std::string& Dta, bool ParseSpell) {
    const bool stored = Level >= 1 && Level <= MaxLevels && Row >= 0 && Row < MaxBricks;
    CellGrid* grid = nullptr;
    if (stored) {
        LevelRecord& record = game.Levels[static_cast<std::size_t>(Level - 1)];
        grid = ParseSpell ? &record.SpellGrid : &record.BrickGrid;
    }
    // Fields are split at commas; the row's last character always belongs to the last
    // field, even a comma, which then reads as a field "," of value 0.
    long field = -1;
    std::size_t start = 0;
    const std::size_t last = Dta.size() - 1;
    for (std::size_t i = 0; i < Dta.size(); ++i) {
        if (Dta[i] != ',' && i != last) continue;
        const std::string_view text(Dta.data() + start, (i == last ? Dta.size() : i) - start);
        start = i + 1;
        ++field;
        const double value = FieldValue(text);
        if (grid && field < MaxBricks) (*grid)(static_cast<int>(field), Row) = CInt(value);
        LevelChecksum += value * (Row + field);
    }
}

double LevelSetReader::FieldValue(std::string_view text) {
    // Nearly every field of a set is a small whole number, read here directly; anything
    // else (blanks, a plus, a fraction, an exponent, junk) takes Val, which gives the same
    // value for the plain ones.
    std::size_t pos = text.starts_with('-') ? 1 : 0;
    const bool negative = pos == 1;
    if (pos < text.size() && text.size() - pos <= 9) {
        long number = 0;
        for (; pos < text.size(); ++pos) {
            const char c = text[pos];
            if (c < '0' || c > '9') break;
            number = number * 10 + (c - '0');
        }
        if (pos == text.size()) return negative ? -static_cast<double>(number) : static_cast<double>(number);
    }
    return Val(std::string(text));
}

void LevelSetReader::CheckIntegrity(LevelSetLoad& load, const std::string& lastLine) const {
    if (IsChecksumLine(lastLine)) {
        load.ChecksumLineFound = true;
        load.StoredChecksum = Trim(DecryptNumber(AfterEquals(lastLine), load.SetKey));
    }
    if (!load.DefaultSet) {
        load.Integrity = LevelSetIntegrity::NotChecked;
        return;
    }
    const bool intact = load.ChecksumLineFound && NumberText(LevelChecksum) == load.StoredChecksum;
    load.Integrity = intact ? LevelSetIntegrity::Ok : LevelSetIntegrity::Failed;
}

} // namespace tolva
