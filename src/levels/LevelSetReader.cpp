#include "levels/LevelSetReader.h"

#include "shared/GameText.h"
#include "support/ZenkorDetail.h"
#include "support/ZenkorModule.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <istream>
#include <sstream>
#include <string_view>
#include <unistd.h>

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
            const char* end = buffer.data() + size;
            // The line ends at the first LF or CR; the CR is looked for only up to the LF.
            const char* stop = static_cast<const char*>(std::memchr(start, '\n', static_cast<std::size_t>(end - start)));
            if (stop == nullptr) stop = end;
            if (const void* cr = std::memchr(start, '\r', static_cast<std::size_t>(stop - start))) stop = static_cast<const char*>(cr);
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
    std::array<char, 16384> buffer{};
    std::size_t pos = 0;
    std::size_t size = 0;
};

namespace {

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// Whether `line` starts with the lower-case `key`, in any case. Every line of a set is
// asked this several times, so it copies nothing.
bool StartsWith(std::string_view line, std::string_view key) {
    if (line.size() < key.size()) return false;
    for (std::size_t i = 0; i < key.size(); ++i) {
        char c = line[i];
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c != key[i]) return false;
    }
    return true;
}

bool IsSetName(const std::string& line) { return StartsWith(line, "levelset"); }
bool IsLevelHead(const std::string& line) { return StartsWith(line, "[level"); }
bool IsBrickRow(const std::string& line) { return StartsWith(line, "r"); }
bool IsSpellRow(const std::string& line) { return StartsWith(line, "s"); }
bool IsChecksumLine(const std::string& line) { return StartsWith(line, "checksum"); }

// The text behind the first "="; a line without one has nothing behind it.
std::string_view AfterEquals(std::string_view line) {
    const auto eq = line.find('=');
    return eq == std::string_view::npos ? std::string_view() : line.substr(eq + 1);
}

// A field of at most four digits, with or without a minus: its value without a detour
// through doubles. Nearly every cell of every set is one.
inline bool SmallWholeNumber(std::string_view text, std::int16_t& value) {
    const bool negative = text.starts_with('-');
    const std::size_t digits = text.size() - (negative ? 1 : 0);
    if (digits == 0 || digits > 4) return false;
    int number = 0;
    for (std::size_t pos = negative ? 1 : 0; pos < text.size(); ++pos) {
        const char c = text[pos];
        if (c < '0' || c > '9') return false;
        number = number * 10 + (c - '0');
    }
    // A negative zero goes Val's way, so that what is summed is Val's value to the sign.
    if (negative && number == 0) return false;
    value = static_cast<std::int16_t>(negative ? -number : number);
    return true;
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
    // Opened through the game's file reading: a pipe or a folder of that name is no set,
    // and a file over the bound (a link to an endless one) is a damaged set, which for the
    // default set fails the integrity test like any other damage. It is streamed, never
    // held whole; a file that cannot be read to its end (grown past the bound while read,
    // a read error) counts as one that could not be read at all.
    FileRead read = FileRead::Missing;
    LevelSetLoad load;
    if (const int fd = OpenFileWithin(setFolder + "levels.set", MaxLevelSetBytes, read); fd >= 0) {
        detail::BoundedFileBuffer buffer(fd, MaxLevelSetBytes);
        std::istream file(&buffer);
        load = Scan(&file);
        ::close(fd);
        read = buffer.Outcome();
        if (read != FileRead::Ok && hooks) hooks->ClearLevelMenu();
    }
    if (read != FileRead::Ok) load = Scan(nullptr);
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
    for (auto& record : game.Levels) record.Clear();
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
            load.SetName = std::string(AfterEquals(line));
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
        brickText.clear();
        spellText.clear();
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

void LevelSetReader::ParseRow(int Level, int Row, std::string_view Dta, bool ParseSpell) {
    const bool stored = Level >= 1 && Level <= MaxLevels && Row >= 0 && Row < MaxBricks;
    CellGrid* grid = nullptr;
    if (stored) {
        LevelRecord& record = game.Levels[static_cast<std::size_t>(Level - 1)];
        grid = ParseSpell ? &record.SpellGrid : &record.BrickGrid;
    }
    // Fields are split at commas; the row's last character always belongs to the last
    // field, even a comma, which then reads as a field "," of value 0.
    if (Dta.empty()) return;
    const char* const begin = Dta.data();
    const char* const last = begin + Dta.size() - 1;
    const char* start = begin;
    for (int field = 0;; ++field) {
        const char* stop = start;
        while (stop < last && *stop != ',') ++stop;
        const bool final = stop == last;
        const std::string_view text(start, static_cast<std::size_t>((final ? last + 1 : stop) - start));
        std::int16_t cell = 0;
        double value = 0;
        if (SmallWholeNumber(text, cell)) {
            value = cell;
        } else {
            value = FieldValue(text);
            cell = CInt(value);
        }
        if (grid && field < MaxBricks) (*grid)(field, Row) = cell;
        LevelChecksum += value * (Row + field);
        if (final) return;
        start = stop + 1;
    }
}

bool LevelSetReader::SmallWholeField(std::string_view text, std::int16_t& value) {
    return SmallWholeNumber(text, value);
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
        load.StoredChecksum = Trim(DecryptNumber(std::string(AfterEquals(lastLine)), load.SetKey));
    }
    if (!load.DefaultSet) {
        load.Integrity = LevelSetIntegrity::NotChecked;
        return;
    }
    const bool intact = load.ChecksumLineFound && NumberText(LevelChecksum) == load.StoredChecksum;
    load.Integrity = intact ? LevelSetIntegrity::Ok : LevelSetIntegrity::Failed;
}

} // namespace tolva
