#include "stats/qt/OpenStatistics.h"

#include "shared/GameText.h"
#include "stats/qt/frmStatistics.h"
#include "support/ZenkorModule.h"
#include "support/platform/Dialogs.h"

namespace tolva {

frmStatistics* OpenStatistics(QPointer<frmStatistics>& open, const StatisticsEntry& entry) {
    const std::string title(GameTitle);
    if (!FileExists(entry.StatPath)) {
        entry.Boxes.MessageBox("Currently there is no stat.ini file. You might need to check the option "
                               "\"Log statistics\" in the settings dialog!",
                               title, MessageIcon::Exclamation, MessageButtons::Ok);
        return nullptr;
    }
    if (!entry.IsDefaultSet)
        entry.Boxes.MessageBox("Levels statistics is for default levels only !", title, MessageIcon::Information,
                               MessageButtons::Ok);
    // A window still loading (the menu chosen again while the load let events run) is
    // shown by the call that started the load, once the load is done.
    if (!open.isNull() && open->Loading()) return open.data();
    if (open.isNull()) {
        auto* window = new frmStatistics(entry.StatPath, entry.Boxes, entry.Events, entry.MainWindow);
        open = window;
        window->Load();
        // The load lets events run; the window may have been closed meanwhile.
        if (open.isNull()) return nullptr;
    }
    open->show();
    open->raise();
    open->activateWindow();
    return open.data();
}

} // namespace tolva
