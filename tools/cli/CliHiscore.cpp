// tolva2-cli hiscore: looks into a hiscore file, writes one from a plain list, and gives
// the Internet form of a table, all through the game's own code (Hiscores), so that what
// the tool shows is what the game would load and what it writes the game would write.
//
//   hiscore show FILE [--key K]     the ten entries as the file holds them, then whether
//                                   the checksum matches (bad: the game would reset it)
//   hiscore write FILE [--key K]    NAME,LEVEL,SCORE lines from standard input
//   hiscore string FILE [--key K]   MakeHiscoreString of the table the game would load
//   hiscore page GAMEDIR            the page an Internet submission from that game folder
//                                   would write (its tolva2.ini, the default set's table,
//                                   its stat.ini), so that a script can check a submission
//                                   without a browser
//
// K is "default" (the default set's key), "other" (every other set's) or a number.
#include "CliCommand.h"
#include "CliHiscore.h"

#include "hiscores/Hiscores.h"
#include "hiscores/HiscoreKeeper.h"
#include "hiscores/SubmissionPage.h"
#include "settings/GameSettings.h"
#include "support/ZenkorModule.h"

#include <unistd.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace tolva::cli {

std::string HiscoreShowText(const std::string& file, std::int16_t key) {
    Hiscores table;
    const HiscoreLoad load = table.ReadAsStored(file, key);
    std::string out;
    for (int i = 0; i < Hiscores::Places; ++i) {
        out += std::to_string(i + 1) + '\t' + table[i].Name + '\t' + NumberText(table[i].Level) + '\t' +
               NumberText(table[i].Score) + '\n';
    }
    out += load == HiscoreLoad::Loaded ? "checksum: ok\n" : load == HiscoreLoad::Empty ? "checksum: none\n"
                                                                                      : "checksum: bad\n";
    return out;
}

namespace {

// The longest value the game's ini reading keeps; a name enciphers to as many bytes.
constexpr std::size_t MaxNameBytes = 2047;

// Entry keys run up to the set's key + 9, and Crypter takes keys up to 32766.
constexpr std::int32_t HighestSetKey = 32766 - (Hiscores::Places - 1);

struct HiscoreArgs {
    std::string file;
    std::int16_t key = DefaultSetKey;
};

bool ParseWhole(const std::string& text, std::int32_t& value) {
    const char* first = text.data();
    const char* last = first + text.size();
    const bool plus = first != last && *first == '+';
    if (plus) ++first;
    if (first == last || *first == '+' || (plus && *first == '-')) return false;
    const auto [end, error] = std::from_chars(first, last, value);
    return error == std::errc() && end == last;
}

bool ParseKey(const std::string& text, std::int16_t& key) {
    if (text == "default") key = DefaultSetKey;
    else if (text == "other") key = OtherSetKey;
    else {
        std::int32_t number = 0;
        if (!ParseWhole(text, number) || number < -32768 || number > HighestSetKey) return false;
        key = static_cast<std::int16_t>(number);
    }
    return true;
}

// FILE and an optional --key K, in any order. Gives an exit status, ExitOk if all is well.
int ParseArgs(const std::string& sub, const std::vector<std::string>& args, HiscoreArgs& out) {
    bool haveFile = false;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--key") {
            if (i + 1 >= args.size()) return UsageError("hiscore " + sub + ": --key needs a value: default, other or a number");
            if (!ParseKey(args[++i], out.key))
                return UsageError("hiscore " + sub + ": --key must be default, other or a whole number from -32768 to " +
                                  std::to_string(HighestSetKey) + ", not '" + args[i] + "'");
        } else if (args[i].size() > 1 && args[i][0] == '-' && args[i][1] == '-') {
            return UsageError("hiscore " + sub + ": unknown option '" + args[i] + "'");
        } else if (haveFile) {
            return UsageError("hiscore " + sub + ": only one FILE may be given");
        } else {
            out.file = args[i];
            haveFile = true;
        }
    }
    if (!haveFile) return UsageError("hiscore " + sub + " needs FILE");
    return ExitOk;
}


int RunShow(const HiscoreArgs& a) {
    const std::string out = HiscoreShowText(a.file, a.key);
    std::cout.write(out.data(), static_cast<std::streamsize>(out.size()));
    return ExitOk;   // a failed write is reported when tolva2-cli ends
}

// One line NAME,LEVEL,SCORE; the name is everything before the last two commas.
bool ParseEntry(std::string line, HiscoreEntry& entry, std::string& why) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::size_t scoreComma = line.rfind(',');
    const std::size_t levelComma = scoreComma == std::string::npos || scoreComma == 0
                                       ? std::string::npos : line.rfind(',', scoreComma - 1);
    if (levelComma == std::string::npos) {
        why = "expected NAME,LEVEL,SCORE";
        return false;
    }
    std::int32_t level = 0;
    if (!ParseWhole(line.substr(levelComma + 1, scoreComma - levelComma - 1), level) || level < -32768 ||
        level > 32767) {
        why = "LEVEL must be a whole number from -32768 to 32767";
        return false;
    }
    const std::string scoreText = line.substr(scoreComma + 1);
    double score = 0;
    const auto [end, error] = std::from_chars(scoreText.data(), scoreText.data() + scoreText.size(), score);
    if (scoreText.empty() || error != std::errc() || end != scoreText.data() + scoreText.size() ||
        !std::isfinite(score)) {
        why = "SCORE must be a decimal number";
        return false;
    }
    entry = HiscoreEntry{line.substr(0, levelComma), static_cast<std::int16_t>(level), score};
    return true;
}

// Reads `bytes` back the way the game reads a hiscore file, from a private temporary
// file, and gives the place of the first name that does not come back as it was given
// (-1 if all do, -2 if the check could not be made): the last word on whether the game
// reads the file as it is written.
int FirstNameLost(const Hiscores& table, std::int16_t key, const std::string& bytes) {
    std::string path = (std::filesystem::temp_directory_path() / "tolva2-cli-hiscore-XXXXXX").string();
    const int fd = ::mkstemp(path.data());
    if (fd < 0) return -2;
    const bool written = ::write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    ::close(fd);
    Hiscores readBack;
    if (written) readBack.ReadAsStored(path, key);
    std::filesystem::remove(path);
    if (!written) return -2;
    for (int i = 0; i < Hiscores::Places; ++i)
        if (readBack[i].Name != table[i].Name) return i;
    return -1;
}

int RunWrite(const HiscoreArgs& a) {
    Hiscores table;
    int count = 0;
    int lineNo = 0;
    std::vector<int> lineOf;
    for (std::string line; std::getline(std::cin, line);) {
        ++lineNo;
        if (line.empty() || line == "\r") continue;
        if (count == Hiscores::Places) return UsageError("hiscore write: more than ten entries on standard input");
        std::string why;
        if (!ParseEntry(line, table[count], why))
            return UsageError("hiscore write: line " + std::to_string(lineNo) + ": " + why);
        // The game keeps 2047 bytes of a value it reads: a longer name would come back cut.
        if (table[count].Name.size() > MaxNameBytes) {
            std::cerr << "tolva2-cli: hiscore write: line " << lineNo << ": the name is " << table[count].Name.size()
                      << " bytes, and the game reads back " << MaxNameBytes << " at most; nothing written\n";
            return ExitFailed;
        }
        lineOf.push_back(lineNo);
        ++count;
    }
    if (std::cin.bad()) {
        std::cerr << "tolva2-cli: hiscore write: could not read standard input\n";
        return ExitFailed;
    }
    // What the game could not read back as written is not written at all.
    if (const std::optional<std::string> bytes = table.FileBytes(a.key)) {
        const int lost = FirstNameLost(table, a.key, *bytes);
        if (lost == -2) {
            std::cerr << "tolva2-cli: hiscore write: could not check the table in a temporary file; nothing written\n";
            return ExitFailed;
        }
        if (lost >= 0) {
            std::cerr << "tolva2-cli: hiscore write: the table would not read back as given (the name of line "
                      << lineOf[static_cast<std::size_t>(lost)] << " first); nothing written\n";
            return ExitFailed;
        }
    }
    if (!table.SaveScore(a.file, a.key)) {
        std::cerr << "tolva2-cli: hiscore write: could not write '" << a.file
                  << "' (missing folder, no permission, or a name that cannot be stored with this key)\n";
        return ExitFailed;
    }
    return ExitOk;
}

int RunString(const HiscoreArgs& a) {
    Hiscores table;
    table.Load(a.file, a.key);
    const std::string text = table.MakeHiscoreString(a.key);
    std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
    return ExitOk;
}

int RunPage(const std::vector<std::string>& args) {
    if (args.size() > 2 || (args.size() == 1 && !UseInstalledGameFolders()))
        return UsageError("hiscore page needs GAMEDIR, and nothing else");
    std::string gameFolder;
    if (args.size() == 1) {
        gameFolder = AppPath();
    } else {
        std::string folder = args[1];
        while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
        if (!FolderExists(folder)) {
            std::cerr << "tolva2-cli: hiscore page: '" << args[1] << "' is not a folder\n";
            return ExitFailed;
        }
        // The game folder as the game stores it: with its closing backslash.
        gameFolder = folder + "\\";
    }
    const GameSettings settings = GameSettings::Read(gameFolder + "tolva2.ini");
    // What the game holds after loading the default set: a table that fails its
    // checksum is ten free places.
    Hiscores table;
    table.Load(HiscoreKeeper::HiscorePath(gameFolder, GameSettings::DefaultLevelSet), DefaultSetKey);
    const std::string page = MakeSubmissionPage(gameFolder, settings, table, DefaultSetKey);
    std::cout.write(page.data(), static_cast<std::streamsize>(page.size()));
    return ExitOk;
}

int RunHiscore(const std::vector<std::string>& args) {
    if (args.empty()) return UsageError("hiscore needs a subcommand: show, write, string or page");
    const std::string& sub = args[0];
    if (sub == "page") return RunPage(args);
    if (sub != "show" && sub != "write" && sub != "string")
        return UsageError("unknown hiscore subcommand '" + sub + "'; use show, write, string or page");
    HiscoreArgs parsed;
    if (const int status = ParseArgs(sub, args, parsed); status != ExitOk) return status;
    if (sub == "show") return RunShow(parsed);
    if (sub == "write") return RunWrite(parsed);
    return RunString(parsed);
}

const CliRegistration registration{CliCommand{
    "hiscore",
    "hiscore show FILE [--key K]       the ten entries (PLACE, NAME, LEVEL, SCORE) and the checksum state\n"
    "  hiscore write FILE [--key K]      write FILE from up to ten NAME,LEVEL,SCORE lines on standard input\n"
    "  hiscore string FILE [--key K]     the table's Internet form, no line end (K: default, other or a number)\n"
    "  hiscore page [GAMEDIR]            the page a submission from GAMEDIR would post, no line end\n"
    "                                    (installed, GAMEDIR left out: the game's own folders)",
    RunHiscore}};

} // namespace
} // namespace tolva::cli
