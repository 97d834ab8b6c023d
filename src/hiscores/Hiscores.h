#pragma once
// Hiscores: the ten best games of one level set, best first, and hiscore.hi, the file
// that keeps them in the set's folder.
//
// The file is an ini file in which everything, section and key names included, has gone
// through Crypter: entry i (0..9) is enciphered with the set's key plus i, the checksum
// section with the set's key alone. The checksum is the sum of Level + Score over the ten
// entries; a table whose checksum does not match is thrown away as edited by hand. Names
// are not in the sum, so a changed name loads as it was changed.
//
// A save writes the whole file anew. The game used to delete the file and then write the
// 31 keys one at a time; the bytes here are the same ones that sequence leaves (sections
// appended in order, keys behind each other, CR LF lines), but they are built in memory
// and put in place with one atomic replace, so that a crash or a full disk leaves either
// the old table or the new one.
//
// The Internet form of the table (MakeHiscoreString) is a text of comma-separated fields
// with a checksum of its own at the end, the whole enciphered once with the set's key.
// ParseHiscoreString is its reverse, shared by tolva2-cli and the hiscore server.
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tolva {

// One place of the table. A default entry is a free place: "...", level 0, score 0.
struct HiscoreEntry {
    std::string Name = "...";
    std::int16_t Level = 0;
    double Score = 0;

    bool operator==(const HiscoreEntry&) const = default;
};

enum class HiscoreLoad {
    Loaded,     // the file's table, checksum matched
    Empty,      // no table yet (no file, or no first entry in it): ten free places
    Corrupted,  // the checksum did not match: ten free places, and the caller says so
};

// Why a hiscore string does not check out.
enum class HiscoreStringProblem { None, Truncated, MalformedNumber, BadChecksum };

class Hiscores {
public:
    static constexpr int Places = 10;
    using Table = std::array<HiscoreEntry, Places>;

    Hiscores() = default;
    explicit Hiscores(const Table& entries) : Entries(entries) {}

    Table Entries;

    HiscoreEntry& operator[](int index) { return Entries[static_cast<std::size_t>(index)]; }
    const HiscoreEntry& operator[](int index) const { return Entries[static_cast<std::size_t>(index)]; }

    // Ten free places.
    void Reset() { Entries = Table{}; }

    // Fills the table from the file at `path` (a stored path) enciphered with `setKey`.
    // `label` gets the Loading window's progress text once per entry. On Corrupted the
    // table holds ten free places; showing the message is the caller's part.
    HiscoreLoad Load(const std::string& path, std::int16_t setKey,
                     const std::function<void(const std::string&)>& label = {});
    // The same reading without the reset: the table as the file holds it, whatever its
    // checksum says (for looking into a file; the game itself always uses Load).
    HiscoreLoad ReadAsStored(const std::string& path, std::int16_t setKey,
                             const std::function<void(const std::string&)>& label = {});

    // Writes the whole table to `path` (a stored path), replacing any file there, a
    // read-only one included. False if it could not be written; the old file is then
    // left as it was.
    bool SaveScore(const std::string& path, std::int16_t setKey) const;
    // The same file at a path the player chose in a save box (a native path), taken as it
    // is: no name is matched ignoring case, and a backslash is part of a name.
    bool SaveScoreAt(const std::string& nativePath, std::int16_t setKey) const;
    // The bytes SaveScore writes; none if a text cannot stand in an ini line as it
    // enciphers with this key (a line break or NUL in it, or a key name that would read
    // as something else), which the ini writer would refuse as well.
    std::optional<std::string> FileBytes(std::int16_t setKey) const;

    // The Internet form of the table.
    std::string MakeHiscoreString(std::int16_t setKey) const;

    // Makes room for `newScore`: `place` is the 0-based index it takes, or -1. The
    // entries from that index on move down one place, the last one dropping off; the
    // entry at the index stays as it was until the caller fills it.
    void CheckAndSetHiscore(double newScore, std::int16_t& place);
    // The 1-based place `score` would take, or -1. Changes nothing.
    std::int16_t CheckHiscorePlace(double score) const;

    // The checksum of the file: the sum of Level + Score, as decimal text.
    std::string FileChecksum() const;

private:
    // The 0-based index `score` would take, or -1: the first entry whose score is at
    // or below it, so that a tie goes to the new score. Below 1 takes no place.
    int SearchPlace(double score) const;
};

// The result of reading a hiscore string.
struct HiscoreStringParse {
    HiscoreStringProblem Problem = HiscoreStringProblem::None;
    Hiscores::Table Entries{};
    bool Ok() const { return Problem == HiscoreStringProblem::None; }
};

// Reads the Internet form of a table back, checking every field and the checksum.
HiscoreStringParse ParseHiscoreString(const std::string& text, std::int16_t setKey);
// A short English sentence for a problem, for messages and logs.
std::string Describe(HiscoreStringProblem problem);

} // namespace tolva
