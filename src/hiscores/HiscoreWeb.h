#pragma once
// The three hiscore entries of the Options menu, as plain rules: "Export hiscore file...",
// "Submit to Internet Hiscores" and "Show Internet hiscores". Only the default set's
// table leaves the machine; a submission waits until no game is on; an empty table is
// refused by both with the export's message. What the entries open (the save-file box,
// the browser window) comes in from outside, so that every refusal is tested without a
// window.
#include <cstdint>
#include <functional>
#include <string>

namespace tolva {

class Dialogs;
class Hiscores;

// What the entries look at: the chosen set's table, as of the moment they are chosen.
struct HiscoreMenuState {
    const Hiscores& Table;
    std::int16_t SetKey = 0;     // the chosen set's Crypter key
    bool IsDefaultSet = true;
    bool GameRunning = false;
    Dialogs& Boxes;
};

// Opens the browser window modally: true to submit the table, false to show the
// hiscore address. Returns when the window has closed.
using OpenWebBrowser = std::function<void(bool submitHiscore)>;

enum class ExportOutcome { OtherSet, NoHiscores, Cancelled, Saved, NotWritten };
enum class SubmitOutcome { GameRunning, OtherSet, NoHiscores, Opened };

// Whether any place of the table holds a score above 0.
bool HasHiscores(const Hiscores& table);

// "Export hiscore file...": the refusals, then the save-file box starting in
// `desktopFolder`, then the table written to the chosen file as hiscore.hi is written.
ExportOutcome ExportHiscore(const HiscoreMenuState& state, const std::string& desktopFolder);

// "Submit to Internet Hiscores": the refusals, then the browser window in its
// submitting form. Another set is refused without a word: only the default set's table
// is ever submitted, and the menu entry is greyed out for other sets anyway.
SubmitOutcome SubmitInternetHiscores(const HiscoreMenuState& state, const OpenWebBrowser& open);

// "Show Internet hiscores": the browser window showing the hiscore address. It asks
// nothing; it works during a game and with any set.
void ShowInternetHiscores(const OpenWebBrowser& open);

} // namespace tolva
