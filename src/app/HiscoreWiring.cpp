#include "app/HiscoreWiring.h"

#include "hiscores/HiscoreKeeper.h"
#include "session/GameLevelSets.h"
#include "session/SessionView.h"
#include "support/ZenkorModule.h"

namespace tolva {

void ConnectHiscoreTable(GameLevelSets& sets, HiscoreKeeper& table, SessionView& view, Dialogs& dialogs) {
    sets.HiscoreSaver = [&sets, &table] { table.SaveForSet(AppPath(), sets.LevelSetPath); };
    sets.HiscoreLoader = [&sets, &table, &view, &dialogs](std::int16_t) {
        table.LoadForSet(
            AppPath(), sets.LevelSetPath, [&view](const std::string& text) { view.ShowLoadingText(text); }, dialogs,
            [&view] { view.SetLoadingTopMost(false); }, [&view] { view.SetLoadingTopMost(true); });
    };
    table.EntryMade = sets.HiscoreSaver;
}

} // namespace tolva
