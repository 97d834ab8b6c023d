// Ini access with the behaviour of the classic Windows profile-string functions, on bytes.
//
// Every text file of the game goes through here, and hiscore.hi holds enciphered section
// and key names with codes up to 255, so nothing is decoded: a name is a run of bytes
// that matches another one when both are equal after folding A-Z to a-z (and only
// those). The rules the game's files rely on:
//
//  - A line is a section head when its first non-blank byte is '[' and a ']' follows
//    somewhere; the name is what stands between the '[' and the last ']', trimmed.
//    A line whose first non-blank byte is ';' is a comment and is never a key. A line
//    starting with '[' without any ']' is neither head nor key and is left alone.
//  - Any other non-blank line is a key: the name is the text before the first '=',
//    trimmed; the value is the text behind it, trimmed of blanks and tabs (a line
//    without '=' is a key with an empty value). A value enclosed in a matching pair of
//    double or single quotes loses the pair, and is cut at 2047 bytes, as through the
//    2048-byte buffer of the original call.
//  - Only the first section of a name counts, and in it only the first key of a name:
//    that is the one read and the one replaced.
//  - Lines end in LF or CR LF when read. A rewrite ends every line in CR LF.
//
// A write reads the whole file, changes one line or adds lines, and puts the whole file
// back through a temporary file that is renamed into place. A key that exists is
// replaced where it stands ("Name=value", the name spelt as the file had it); a missing
// key is added behind the last key line of its section, so that blank lines or a comment
// that separate it from the next section stay in front of that section; a missing
// section is appended at the end of the file, without a blank line before it, as the
// original function did.
#include "support/ZenkorDetail.h"
#include "support/ZenkorModule.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <istream>
#include <string_view>
#include <vector>

namespace tolva {

namespace {

using detail::EqualsNoCase;
using detail::TrimBlanks;

constexpr std::size_t MaxValueBytes = 2047;

enum class LineKind { Blank, Comment, Section, Key, Other };

struct IniLine {
    LineKind kind = LineKind::Blank;
    std::string_view name;   // section or key name, trimmed
    std::string_view value;  // key value, trimmed
};

IniLine ClassifyLine(std::string_view line) {
    IniLine result;
    const std::string_view body = TrimBlanks(line);
    if (body.empty()) return result;
    if (body.front() == ';') {
        result.kind = LineKind::Comment;
        return result;
    }
    if (body.front() == '[') {
        const std::size_t close = body.rfind(']');
        if (close == std::string_view::npos || close == 0) {
            result.kind = LineKind::Other;
            return result;
        }
        result.kind = LineKind::Section;
        result.name = TrimBlanks(body.substr(1, close - 1));
        return result;
    }
    result.kind = LineKind::Key;
    const std::size_t eq = body.find('=');
    if (eq == std::string_view::npos) {
        result.name = body;
    } else {
        result.name = TrimBlanks(body.substr(0, eq));
        result.value = TrimBlanks(body.substr(eq + 1));
    }
    return result;
}

// The next line of a file from `start`, without its line end; moves `start` behind it.
// A CR right before the LF belongs to the line end (so does a CR that ends the file); a
// last line without any line end is a line too.
std::string_view NextLine(std::string_view bytes, std::size_t& start) {
    std::size_t end = bytes.find('\n', start);
    if (end == std::string_view::npos) end = bytes.size();
    std::string_view line = bytes.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    start = end + 1;
    return line;
}

std::vector<std::string_view> SplitLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < bytes.size()) lines.push_back(NextLine(bytes, start));
    return lines;
}

std::string FinishValue(std::string_view value) {
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front()) {
        value = value.substr(1, value.size() - 2);
    }
    if (value.size() > MaxValueBytes) value = value.substr(0, MaxValueBytes);
    return std::string(value);
}

bool HasLineBreakOrNul(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

// A name or value that could not be read back as it was written is refused rather than
// written into a line that would mean something else.
bool CanBeWritten(std::string_view section, std::string_view key, std::string_view value) {
    if (HasLineBreakOrNul(section) || HasLineBreakOrNul(key) || HasLineBreakOrNul(value)) return false;
    if (key.find('=') != std::string_view::npos) return false;
    const std::string_view trimmedKey = TrimBlanks(key);
    return trimmedKey.empty() || (trimmedKey.front() != ';' && trimmedKey.front() != '[');
}

// Where the first section of this name starts and ends, as line indices: `head` is the
// head line (npos if there is none), `end` the next head or the end of the file.
struct SectionSpan {
    std::size_t head = std::string_view::npos;
    std::size_t end = 0;
};

SectionSpan FindSection(const std::vector<std::string_view>& lines, std::string_view section) {
    SectionSpan span;
    span.end = lines.size();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const IniLine line = ClassifyLine(lines[i]);
        if (line.kind != LineKind::Section) continue;
        if (span.head != std::string_view::npos) {
            span.end = i;
            break;
        }
        if (EqualsNoCase(line.name, section)) span.head = i;
    }
    return span;
}

void AppendLine(std::string& out, std::string_view line) {
    out.append(line);
    out.append("\r\n");
}

// The file with the key set: the whole new content.
std::string WithKeySet(std::string_view old, std::string_view section, std::string_view key,
                       std::string_view value) {
    const std::vector<std::string_view> lines = SplitLines(old);
    const SectionSpan span = FindSection(lines, section);

    std::size_t replaceAt = std::string_view::npos;
    std::size_t insertAt = std::string_view::npos;
    std::string_view storedName = key;
    if (span.head != std::string_view::npos) {
        insertAt = span.head + 1;
        for (std::size_t i = span.head + 1; i < span.end; ++i) {
            const IniLine line = ClassifyLine(lines[i]);
            if (line.kind != LineKind::Key) continue;
            if (EqualsNoCase(line.name, key)) {
                replaceAt = i;
                storedName = line.name;
                break;
            }
            insertAt = i + 1;
        }
    }

    std::string keyLine;
    keyLine.reserve(storedName.size() + 1 + value.size());
    keyLine.append(storedName).append("=").append(value);

    std::string out;
    out.reserve(old.size() + keyLine.size() + section.size() + 8 + 2 * lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i == insertAt && replaceAt == std::string_view::npos) AppendLine(out, keyLine);
        AppendLine(out, i == replaceAt ? std::string_view(keyLine) : lines[i]);
    }
    if (span.head == std::string_view::npos) {
        out.append("[").append(section).append("]\r\n");
        AppendLine(out, keyLine);
    } else if (insertAt == lines.size() && replaceAt == std::string_view::npos) {
        AppendLine(out, keyLine);
    }
    return out;
}

} // namespace

std::string ReadIni(const std::string& fileName, const std::string& section, const std::string& key) {
    FileRead opened = FileRead::Missing;
    std::size_t size = 0;
    const int fd = detail::OpenRegularFile(NativePath(fileName), MaxIniBytes, opened, size);
    if (fd < 0) return {};
    const std::string_view wantedSection = TrimBlanks(section);
    const std::string_view wantedKey = TrimBlanks(key);

    // One pass: find the first section of the name, then its first key of the name. The
    // file is read a piece at a time and only as far as that section goes: a level set
    // names itself in its first lines, and the hundred levels after them are not needed.
    detail::BoundedFileBuffer buffer(fd, MaxIniBytes);
    std::istream in(&buffer);
    std::string text;
    std::string answer;
    bool inSection = false;
    while (std::getline(in, text)) {
        std::string_view line(text);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        const IniLine classified = ClassifyLine(line);
        if (classified.kind == LineKind::Section) {
            if (inSection) break;
            inSection = EqualsNoCase(classified.name, wantedSection);
        } else if (inSection && classified.kind == LineKind::Key && EqualsNoCase(classified.name, wantedKey)) {
            answer = FinishValue(classified.value);
            break;
        }
    }
    // A file that could not be read to its end has no trustworthy last line.
    if (in.eof() && buffer.Outcome() != FileRead::Ok) answer.clear();
    ::close(fd);
    return answer;
}

bool WriteIni(const std::string& fileName, const std::string& section, const std::string& key,
              const std::string& value) {
    if (!CanBeWritten(section, key, value)) return false;
    // Read from where the game reads, written where it writes: the same file in a portable
    // game folder; installed, a file shipped with the game is rewritten into the player's.
    const std::string native = NativePath(fileName);
    const std::string target = WritablePath(fileName, true);

    std::string old;
    struct stat info {};
    if (::stat(native.c_str(), &info) == 0) {
        // A read-only file is refused, as the original refused it: the game clears the
        // attributes first where it means to overwrite one.
        if (!S_ISREG(info.st_mode) || (info.st_mode & S_IWUSR) == 0) return false;
        // A file that cannot be read whole (over the bound: damaged) is left as it is
        // rather than rewritten from what little could be made of it.
        if (detail::ReadFileBytes(native, old, MaxIniBytes) != FileRead::Ok) return false;
    } else if (errno != ENOENT) {
        return false;
    }
    return detail::ReplaceFileContents(target, WithKeySet(old, TrimBlanks(section), TrimBlanks(key), value));
}

} // namespace tolva
