#include "hiscores/HiscoreWeb.h"

#include "hiscores/Hiscores.h"
#include "shared/GameText.h"
#include "support/platform/Dialogs.h"

#include <algorithm>

namespace tolva {

namespace {

constexpr const char* NoHiscoresText = "There is currently no hiscores to export!";

void Tell(Dialogs& boxes, const std::string& text, MessageIcon icon) {
    boxes.MessageBox(text, std::string(GameTitle), icon, MessageButtons::Ok);
}

} // namespace

bool HasHiscores(const Hiscores& table) {
    return std::any_of(table.Entries.begin(), table.Entries.end(),
                       [](const HiscoreEntry& entry) { return entry.Score > 0; });
}

ExportOutcome ExportHiscore(const HiscoreMenuState& state, const std::string& desktopFolder) {
    if (!state.IsDefaultSet) {
        Tell(state.Boxes, "You can only export hiscores from the [default] level-set.", MessageIcon::Information);
        return ExportOutcome::OtherSet;
    }
    if (!HasHiscores(state.Table)) {
        Tell(state.Boxes, NoHiscoresText, MessageIcon::Exclamation);
        return ExportOutcome::NoHiscores;
    }
    const std::string path =
        state.Boxes.SaveFileBox({"Export hiscore-file", "Tolva hiscore-file|*.hi", desktopFolder, true});
    if (path.empty()) return ExportOutcome::Cancelled;
    // The file the box named, as it named it: the box has asked about overwriting that
    // very file. A failed write says nothing, as every save of a table does; the old
    // file, if any, is still whole.
    return state.Table.SaveScoreAt(path, state.SetKey) ? ExportOutcome::Saved : ExportOutcome::NotWritten;
}

SubmitOutcome SubmitInternetHiscores(const HiscoreMenuState& state, const OpenWebBrowser& open) {
    if (state.GameRunning) {
        Tell(state.Boxes,
             "You can't submit hiscores while you are playing.\r\n"
             "You must wait untill you are game over, or click on \"END GAME\" in the game menu.",
             MessageIcon::Exclamation);
        return SubmitOutcome::GameRunning;
    }
    if (!state.IsDefaultSet) return SubmitOutcome::OtherSet;
    if (!HasHiscores(state.Table)) {
        Tell(state.Boxes, NoHiscoresText, MessageIcon::Exclamation);
        return SubmitOutcome::NoHiscores;
    }
    if (open) open(true);
    return SubmitOutcome::Opened;
}

void ShowInternetHiscores(const OpenWebBrowser& open) {
    if (open) open(false);
}

} // namespace tolva
