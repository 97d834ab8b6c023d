#pragma once
// Helpers shared by the source files of ZenkorModule and nobody else: byte-text
// comparisons (ASCII case folding only, since names in the game's files are opaque bytes
// and a code above 127 must never fold into another one) and the low-level file access
// that the ini writer and WriteWholeFile have in common.
#include "support/ZenkorModule.h"

#include <array>
#include <streambuf>
#include <string>
#include <string_view>

namespace tolva::detail {

inline bool IsBlank(char c) { return c == ' ' || c == '\t'; }

inline std::string_view TrimBlanks(std::string_view text) {
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && IsBlank(text[first])) ++first;
    while (last > first && IsBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

inline char FoldAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

inline bool EqualsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
    return true;
}

// Reads a regular file (a native path) into `contents`, the one place where the game
// reads a file. Gives Missing for a missing file, a folder, a device or pipe (never
// blocks on one), TooLarge for a file over `maxBytes` (an endless one included), Failed
// for a read error; `contents` changes only on Ok.
FileRead ReadFileBytes(const std::string& nativePath, std::string& contents, std::size_t maxBytes);
// The opening half of ReadFileBytes: a descriptor of a regular file of at most
// `maxBytes` on Ok, -1 otherwise; `size` gives the file's size when it opened.
int OpenRegularFile(const std::string& nativePath, std::size_t maxBytes, FileRead& result, std::size_t& size);

// An open file read as a stream, a piece at a time, for a reader that needs only part of
// a large file or means never to hold it whole. The descriptor stays the caller's. The
// stream ends at the file's end, at a read error, or where the file goes past `maxBytes`
// (it grew since it was opened); Outcome tells which.
class BoundedFileBuffer : public std::streambuf {
public:
    BoundedFileBuffer(int fd, std::size_t maxBytes) : fd_(fd), left_(maxBytes) {}
    FileRead Outcome() const { return outcome_; }

protected:
    int_type underflow() override;

private:
    int fd_;
    std::size_t left_;
    FileRead outcome_ = FileRead::Ok;
    std::array<char, 16384> piece_;   // filled by each read; not cleared first
};

// Replaces the file at `nativePath` with `bytes`: they go to a temporary file in the same
// folder, which is then renamed over the old one, so that a crash leaves either the old
// file or the new one, never half of it. An existing file keeps its permission bits; a
// symbolic link stays a link and its target is replaced. Gives false if nothing changed.
bool ReplaceFileContents(const std::string& nativePath, const std::string& bytes);

// A stored path mapped to a native one in a single folder tree: backslashes to '/', and
// each missing name looked up without regard to case. NativePath adds the layers.
std::string ResolveStoredPath(const std::string& storedPath);

// Makes the native `folder` and every missing folder above it, each the owner's only, as
// the desktop's rules for $XDG_DATA_HOME want of a player's data folder. True if it is there.
bool MakeFolderChain(const std::string& folder);

} // namespace tolva::detail
