// The hiscore table and its file. See Hiscores.h for the file's form and why a save is
// built in memory.
#include "hiscores/Hiscores.h"

#include "support/ZenkorDetail.h"
#include "support/ZenkorModule.h"

#include <string_view>

namespace tolva {

namespace {

// Entry i is enciphered with the set's key plus i; the sum stays in 32 bits so that no
// key the tool accepts can overflow.
std::int32_t EntryKey(std::int16_t setKey, int index) { return static_cast<std::int32_t>(setKey) + index; }

std::string SectionOf(std::int16_t setKey, int index) {
    return EncryptNumber("NO" + std::to_string(index), EntryKey(setKey, index));
}

// The checksum as the game stores and compares it: blanks around it do not count.
std::string TrimSpaces(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

bool HasLineBreakOrNul(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

// Builds the file the way the ini writer leaves a new file after one write per key:
// a head line for each new section and each key behind the previous one. The names are
// trimmed as the writer trims them, and what the writer would refuse is refused here.
class IniText {
public:
    bool Section(const std::string& name) {
        if (HasLineBreakOrNul(name)) return false;
        text_.append("[").append(detail::TrimBlanks(name)).append("]\r\n");
        return true;
    }
    bool Key(const std::string& name, const std::string& value) {
        if (HasLineBreakOrNul(name) || HasLineBreakOrNul(value)) return false;
        if (name.find('=') != std::string::npos) return false;
        const std::string_view trimmed = detail::TrimBlanks(name);
        if (!trimmed.empty() && (trimmed.front() == ';' || trimmed.front() == '[')) return false;
        text_.append(trimmed).append("=").append(Protected(value)).append("\r\n");
        return true;
    }
    const std::string& Text() const { return text_; }

    // The reader trims blanks off a value and drops one pair of quotes around it. A
    // typed name of the upper half of the code page can encipher to a blank or a quote at
    // an end (a "·" in the first place of the default set is a blank); such a value is
    // written between quotes, so that it reads back whole instead of losing bytes, or
    // the whole table if the first name came back empty.
    static std::string Protected(const std::string& value) {
        if (value.empty()) return value;
        const char first = value.front();
        const char last = value.back();
        const bool quoted = value.size() >= 2 && (first == '"' || first == '\'') && last == first;
        if (!detail::IsBlank(first) && !detail::IsBlank(last) && !quoted) return value;
        return '"' + value + '"';
    }

private:
    std::string text_;
};

// A field of the Internet form must be the number exactly as the game writes it.
bool IsNumberText(const std::string& text, double& value) {
    value = Val(text);
    return !text.empty() && NumberText(value) == text;
}

bool IsLevelText(const std::string& text, std::int16_t& level) {
    level = CInt(Val(text));
    return !text.empty() && NumberText(level) == text;
}

} // namespace

HiscoreLoad Hiscores::Load(const std::string& path, std::int16_t setKey,
                           const std::function<void(const std::string&)>& label) {
    const HiscoreLoad result = ReadAsStored(path, setKey, label);
    if (result == HiscoreLoad::Corrupted) Reset();
    return result;
}

HiscoreLoad Hiscores::ReadAsStored(const std::string& path, std::int16_t setKey,
                                   const std::function<void(const std::string&)>& label) {
    const auto say = [&](const std::string& text) {
        if (label) label(text);
    };
    if (ReadIni(path, EncryptNumber("NO0", setKey), EncryptNumber("NAME", setKey)).empty()) {
        for (int i = 0; i < Places; ++i) {
            say("Levels_def_hiscore" + std::to_string(i));
            (*this)[i] = HiscoreEntry{};
        }
        return HiscoreLoad::Empty;
    }

    const std::string storedSum =
        DecryptNumber(ReadIni(path, EncryptNumber("CHECKSUM", setKey), EncryptNumber("VALUE", setKey)), setKey);
    double sum = 0;
    for (int i = 0; i < Places; ++i) {
        say("Levels_hiscore" + std::to_string(i));
        const std::int32_t key = EntryKey(setKey, i);
        const std::string section = SectionOf(setKey, i);
        const auto value = [&](const char* name) {
            return DecryptNumber(ReadIni(path, section, EncryptNumber(name, key)), key);
        };
        HiscoreEntry& entry = (*this)[i];
        entry.Name = value("NAME");
        entry.Level = CInt(Val(value("LEVEL")));
        entry.Score = Val(value("SCORE"));
        sum = sum + entry.Level + entry.Score;
    }
    return NumberText(sum) == TrimSpaces(storedSum) ? HiscoreLoad::Loaded : HiscoreLoad::Corrupted;
}

std::optional<std::string> Hiscores::FileBytes(std::int16_t setKey) const {
    IniText file;
    double sum = 0;
    for (int i = 0; i < Places; ++i) {
        const std::int32_t key = EntryKey(setKey, i);
        const HiscoreEntry& entry = (*this)[i];
        const bool written =
            file.Section(SectionOf(setKey, i)) &&
            file.Key(EncryptNumber("NAME", key), EncryptNumber(entry.Name, key)) &&
            file.Key(EncryptNumber("LEVEL", key), EncryptNumber(NumberText(entry.Level), key)) &&
            file.Key(EncryptNumber("SCORE", key), EncryptNumber(NumberText(entry.Score), key));
        if (!written) return std::nullopt;
        sum = sum + entry.Level + entry.Score;
    }
    if (!file.Section(EncryptNumber("CHECKSUM", setKey)) ||
        !file.Key(EncryptNumber("VALUE", setKey), EncryptNumber(NumberText(sum), setKey)))
        return std::nullopt;
    return file.Text();
}

bool Hiscores::SaveScore(const std::string& path, std::int16_t setKey) const {
    const std::optional<std::string> bytes = FileBytes(setKey);
    if (!bytes) return false;
    ClearFileAttributes(path);
    return detail::ReplaceFileContents(WritablePath(path, true), *bytes);
}

bool Hiscores::SaveScoreAt(const std::string& nativePath, std::int16_t setKey) const {
    const std::optional<std::string> bytes = FileBytes(setKey);
    return bytes && detail::ReplaceFileContents(nativePath, *bytes);
}

std::string Hiscores::FileChecksum() const {
    double sum = 0;
    for (const HiscoreEntry& entry : Entries) sum = sum + entry.Level + entry.Score;
    return NumberText(sum);
}

std::string Hiscores::MakeHiscoreString(std::int16_t setKey) const {
    std::string s;
    double sum = 0;
    for (int i = 0; i < Places; ++i) {
        const HiscoreEntry& entry = (*this)[i];
        s += entry.Name + "," + NumberText(entry.Level) + "," + NumberText(entry.Score) + ",";
        // The place numbers are in this sum and not in the file's: the two checksums of
        // one table differ by 45.
        sum = sum + entry.Level + entry.Score + i;
    }
    s += EncryptNumber(NumberText(sum), setKey);
    return EncryptNumber(s, setKey);
}

int Hiscores::SearchPlace(double score) const {
    if (score < 1) return -1;
    for (int i = 0; i < Places; ++i)
        if ((*this)[i].Score <= score) return i;
    return -1;
}

void Hiscores::CheckAndSetHiscore(double newScore, std::int16_t& place) {
    const int index = SearchPlace(newScore);
    place = static_cast<std::int16_t>(index);
    if (index < 0) return;
    for (int i = Places - 2; i >= index; --i) (*this)[i + 1] = (*this)[i];
}

std::int16_t Hiscores::CheckHiscorePlace(double score) const {
    const int index = SearchPlace(score);
    return static_cast<std::int16_t>(index < 0 ? -1 : index + 1);
}

HiscoreStringParse ParseHiscoreString(const std::string& text, std::int16_t setKey) {
    HiscoreStringParse result;
    const std::string s = DecryptNumber(text, setKey);
    std::size_t pos = 0;
    const auto nextField = [&](std::string& field) {
        const std::size_t comma = s.find(',', pos);
        if (comma == std::string::npos) return false;
        field = s.substr(pos, comma - pos);
        pos = comma + 1;
        return true;
    };

    double sum = 0;
    for (int i = 0; i < Hiscores::Places; ++i) {
        std::string name, level, score;
        if (!nextField(name) || !nextField(level) || !nextField(score)) {
            result.Problem = HiscoreStringProblem::Truncated;
            return result;
        }
        HiscoreEntry& entry = result.Entries[static_cast<std::size_t>(i)];
        entry.Name = name;
        if (!IsLevelText(level, entry.Level) || !IsNumberText(score, entry.Score)) {
            result.Problem = HiscoreStringProblem::MalformedNumber;
            return result;
        }
        sum = sum + entry.Level + entry.Score + i;
    }
    if (pos >= s.size()) {
        result.Problem = HiscoreStringProblem::Truncated;
        return result;
    }
    if (DecryptNumber(s.substr(pos), setKey) != NumberText(sum)) result.Problem = HiscoreStringProblem::BadChecksum;
    return result;
}

std::string Describe(HiscoreStringProblem problem) {
    switch (problem) {
    case HiscoreStringProblem::None: return "the table checks out";
    case HiscoreStringProblem::Truncated: return "the text ends before the ten entries and their checksum";
    case HiscoreStringProblem::MalformedNumber: return "a level or score is not a number as the game writes it";
    case HiscoreStringProblem::BadChecksum: return "the checksum does not match the entries";
    }
    return "unknown problem";
}

} // namespace tolva
