#pragma once
// The page of an Internet submission. The game has no network code of its own: it writes
// a small HTML page into the game folder whose hidden form holds the hiscore table (and,
// if the player allows it, the statistics log), and the browser window loads that page,
// whose onload script posts the form to the hiscore address. What goes over the wire is
// therefore exactly these bytes, as the browser encodes a form.
//
// The page is joined from its pieces as they stand: the address, the table's string and
// the bytes of stat.ini go in unescaped, so a quotation mark in a name ends the value
// early, as it always has (the server knows the form it gets). There is no line break
// anywhere, and none at the end.
//
// The page lives only while the browser window is open: it is removed when the window
// closes, and a page left behind by a crash is removed by the next submission before the
// new one is written.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolva {

class Hiscores;
struct GameSettings;

inline constexpr std::string_view SubmissionPageName = "submithiscore.htm";

// The page's bytes. `stat` holds the statistics to send along, or nothing; an empty text
// still gives the text area.
std::string SubmissionPageBytes(const std::string& hiscoreUrl, const std::string& hiscoreString,
                                const std::optional<std::string>& stat);

// Whether the statistics go along: the setting allows it and `statPath` (a stored path)
// exists. Their bytes as they are; a stat.ini that exists but cannot be read gives an
// empty text (the form is sent all the same).
std::optional<std::string> SubmittedStatistics(bool supplyStatFile, const std::string& statPath);

// The page a submission from the game folder `gameFolder` (AppPath(), with its closing
// backslash) sends: `table` in its Internet form with `setKey`, to settings.HiscoreUrl,
// with the folder's stat.ini when settings.SupplyStatFile allows it.
std::string MakeSubmissionPage(const std::string& gameFolder, const GameSettings& settings, const Hiscores& table,
                               std::int16_t setKey);

// The page's file in one game folder.
class SubmissionPage {
public:
    explicit SubmissionPage(std::string gameFolder) : gameFolder_(std::move(gameFolder)) {}

    // The file as a stored path, and as a path this system opens.
    std::string Path() const { return gameFolder_ + std::string(SubmissionPageName); }
    std::string NativeFile() const;

    // Removes a page left by an earlier submission, then writes `bytes` in its place.
    // True if the new page stands there now; false if it could not be written, in
    // which case no page is left either.
    bool Write(const std::string& bytes) const;
    // Removes the page if there is one (read-only or not). True if none is left.
    bool Remove() const;
    bool Exists() const;

private:
    std::string gameFolder_;
};

} // namespace tolva
