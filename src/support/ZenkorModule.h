#pragma once
// ZenkorModule: the game's toolbox of free functions with no state of their own beyond
// the game folder. Every text that passes through here is bytes (std::string holds
// codes 0 to 255 as they are); nothing is ever re-encoded, because hiscore.hi and the
// checksum line of a level set hold enciphered codes above 127.
//
// Paths are stored the way the game's files write them: the game folder from AppPath()
// with its closing backslash, plus a relative part with backslashes
// ("levels\default\levels.set"). Only where a file is opened is the stored form mapped
// to a real path (NativePath), with a case-insensitive match of each name where the
// exact one is missing, so that sets made on case-blind systems load.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tolva {

// ---- ini files ---------------------------------------------------------------------
// The behaviour of the classic profile-string functions: section and key names match
// without regard to case; a missing file, section or key gives an empty text; values
// are trimmed, lose a matching pair of enclosing quotes, and are cut at 2047 bytes.
std::string ReadIni(const std::string& fileName, const std::string& section, const std::string& key);
// Replaces the key where it stands, or adds it at the end of its section, making file
// and section as needed. Lines are written with CR LF. The file is rewritten through a
// temporary file renamed into place. Gives false, changing nothing, if the file could
// not be written (missing folder, read-only file) or if the text could not be read back
// as written (a line break or NUL anywhere, '=' in the key, a key starting with ';' or
// '[').
bool WriteIni(const std::string& fileName, const std::string& section, const std::string& key,
              const std::string& value);

// ---- Crypter -----------------------------------------------------------------------
// Each code of the text steps `key` times through 32..255 (up and wrapping to 32 for
// EncryptNumber, down and wrapping to 255 for DecryptNumber). A key of 0 or less
// leaves the text as it is. A key above 32766 raises GameError 10, source "Crypter".
std::string EncryptNumber(const std::string& text, std::int32_t key);
std::string DecryptNumber(const std::string& text, std::int32_t key);

// The keys of level sets: the default set's and every other set's. With the entry
// numbers 0..9 added they stay within 62..108, where no printable ASCII code enciphers
// to a byte that means something in an ini file.
extern const std::int16_t DefaultSetKey;
extern const std::int16_t OtherSetKey;

// ---- numbers -----------------------------------------------------------------------
// The leading decimal number of a text (blanks, sign, digits, fraction, exponent), 0 if
// the text does not start with one.
double Val(const std::string& text);
// Rounding to the nearest whole number with ties to the even one, saturated at the
// type's limits.
std::int16_t CInt(double value);
std::int32_t CLng(double value);
// A number as decimal text without a leading blank: whole numbers without a point,
// others with up to 15 significant digits.
std::string NumberText(double value);
double Floor(double value);
double Ceil(double value);
// A text of digits padded on the left with "0" to at least `minimum` characters, with a
// "." behind every third character counted from the left, never behind the last one:
// the score's "000.001.234" (minimum 9) and the bonus screen's "123.45" (minimum 5).
std::string GroupDigits(const std::string& digits, std::size_t minimum);
// The text without the blanks at either end.
std::string Trim(const std::string& text);

// ---- files and folders -------------------------------------------------------------
// The game folder with a closing backslash, as a stored path. The default is the
// executable's folder; SetAppPath changes it (from --game-dir DIR) to a portable folder
// of one layer. SetLayeredAppPath makes it the player's folder of an installed game,
// over the installed data folder: paths in it are read from the player's folder first,
// then from the data folder, and written to the player's folder only.
std::string AppPath();
void SetAppPath(const std::string& folder);
void SetLayeredAppPath(const std::string& playerFolder, const std::string& dataFolder);
bool AppPathIsLayered();
// The installed data folder under a layered game folder, as a stored path; empty when
// the game folder is portable.
std::string AppDataPath();
// Reads "--game-dir DIR" from the command line if present, else decides between the
// installed and the portable game from where the executable is (support/GameFolders.h).
void InitAppPath(int argc, char** argv);
// The folder of the running executable, as a native path.
std::string ExecutableFolderPath();

// A stored path (backslashes, maybe the wrong case) as a path this system opens: the
// path to read. In a layered game folder, the player's file if there is one, else the
// installed one, else where the player's would be.
std::string NativePath(const std::string& storedPath);
// The path a write of the stored path goes to: NativePath in a portable game folder; in
// a layered one always the player's folder, whose missing folders on the way are made
// if `makeFolders`.
std::string WritablePath(const std::string& storedPath, bool makeFolders = false);

// True for a regular file (a link counts as what it points to). A folder, a pipe, a
// device or a socket is no file the game can read: opening a pipe would wait for a writer
// for ever, and a device such as /dev/zero never ends.
bool FileExists(const std::string& path);
bool FolderExists(const std::string& path);
void ClearFileAttributes(const std::string& path);
// Names of the folders directly under `path`, in the file system's order, without "."
// and "..". Adds a closing backslash to `path` if it ends in no separator, in the
// caller's variable too.
std::vector<std::string> ListSubfolders(std::string& path);
// Upper bounds on what the game reads into memory, far above any real file of its kind:
// a file over its bound counts as damaged, so that a link to an endless or enormous file
// ends a load instead of filling the memory.
inline constexpr std::size_t MaxLevelSetBytes = std::size_t{64} << 20;
inline constexpr std::size_t MaxPictureBytes = std::size_t{64} << 20;
inline constexpr std::size_t MaxSoundBytes = std::size_t{64} << 20;
// tolva2.ini, stat.ini, hiscore.hi: the largest real one, stat.ini, stays under 40 KiB.
inline constexpr std::size_t MaxIniBytes = std::size_t{4} << 20;
// Any other file: the help page, a scroller's text.
inline constexpr std::size_t MaxOtherFileBytes = std::size_t{16} << 20;

enum class FileRead {
    Ok,
    Missing,     // no such file, or not a regular file (folder, pipe, device)
    TooLarge,    // over the bound: damaged
    Failed,      // a read error
};
// The file's bytes, at most `maxBytes` of them; `contents` changes only on Ok. The file
// is opened without blocking, so that a pipe of that name is turned away, not waited on.
FileRead ReadFileWithin(const std::string& path, std::string& contents, std::size_t maxBytes);
// Opens the file for reading under the same rules, for a reader that streams it instead
// of holding all of it (a large picture): gives an open descriptor on Ok, for the caller
// to close, and -1 otherwise. The size is checked when it opens; a reader that goes on
// past `maxBytes` is its own to bound.
int OpenFileWithin(const std::string& path, std::size_t maxBytes, FileRead& result);
// The file's bytes; false if it could not be read or is over `maxBytes`.
bool ReadWholeFile(const std::string& path, std::string& contents, std::size_t maxBytes = MaxOtherFileBytes);
// Replaces the file with `text`, no line end added. `doEvents` (if given) runs before
// the old file is cleared and before it is deleted. Gives 0, or -1 after a failure.
int WriteWholeFile(const std::string& path, const std::string& text,
                   const std::function<void()>& doEvents = {});
// The text behind the last dot of the name, with the dot if `withDot`; empty if no dot.
// Only the last name of a path is looked at: a dot in a folder name is no extension.
std::string GetFileExtension(const std::string& fileName, bool withDot);
// Blocks the thread for `ms` milliseconds.
void Pause(std::int32_t ms);

} // namespace tolva
