#include "hiscores/HiscoreKeeper.h"

#include "levels/LevelSetReader.h"

namespace tolva {

HiscoreKeeper::HiscoreKeeper(EventLoop& loop, HiscoreView& view)
    : view_(view), flashHiScoreTimer(loop.CreateTimer(true)) {
    flashHiScoreTimer->SetInterval(FlashIntervalMs);
    flashHiScoreTimer->OnTick = [this] { flashHiScoreTimer_Tick(); };
}

HiscoreKeeper::~HiscoreKeeper() { flashHiScoreTimer->SetEnabled(false); }

void HiscoreKeeper::CheckIfHiScore(double score, std::int16_t level) {
    std::int16_t place = -1;
    table_.CheckAndSetHiscore(score, place);
    if (place == -1) return;

    EnteredInitials.clear();
    // The old entry still stands at `place`, so the search lands on place + 1.
    HighlightedPlace = table_.CheckHiscorePlace(score);
    flashHiScoreTimer->SetEnabled(true);
    table_[place] = HiscoreEntry{"***", level, score};

    EnteredInitials = view_.AskInitials();

    flashHiScoreTimer->SetEnabled(false);
    table_[place].Name = EnteredInitials;
    // The new entry stays green until the table is next drawn.
    PrintHiScore(HighlightedPlace, Green, White);
    if (EntryMade) EntryMade();
}

void HiscoreKeeper::flashHiScoreTimer_Tick() {
    if (HighlightedPlace == -1) {
        flashHiScoreTimer->SetEnabled(false);
        return;
    }
    if (FlashColor == 0) {
        FlashColor = Red;
        PrintHiScore(HighlightedPlace, FlashColor, Black);
    } else {
        FlashColor = 0;
        PrintHiScore(HighlightedPlace, FlashColor, White);
    }
}

void HiscoreKeeper::PrintHiScore(std::int16_t highlightPlace, std::int32_t highlightColor,
                                 std::int32_t highlightTextColor) {
    view_.Print(table_, highlightPlace, highlightColor, highlightTextColor);
}

std::int16_t HiscoreKeeper::CheckHiscorePlace(double score) const { return table_.CheckHiscorePlace(score); }

std::string HiscoreKeeper::HiscorePath(const std::string& gameFolder, const std::string& levelSetPath) {
    return gameFolder + levelSetPath + "hiscore.hi";
}

HiscoreLoad HiscoreKeeper::LoadForSet(const std::string& gameFolder, const std::string& levelSetPath,
                                      const std::function<void(const std::string&)>& label, Dialogs& dialogs,
                                      const std::function<void()>& beforeMessage,
                                      const std::function<void()>& afterMessage) {
    const HiscoreLoad result =
        table_.Load(HiscorePath(gameFolder, levelSetPath), LevelSetReader::SetKeyFor(levelSetPath), label);
    if (result == HiscoreLoad::Corrupted) {
        if (beforeMessage) beforeMessage();
        dialogs.MessageBox("HISCORE TABLE IS CORRUPTED! RESETTING !", "CORRUPTED DATA!", MessageIcon::Stop,
                           MessageButtons::Ok);
        if (afterMessage) afterMessage();
    }
    PrintHiScore(-1, 0, 0);
    return result;
}

bool HiscoreKeeper::SaveForSet(const std::string& gameFolder, const std::string& levelSetPath,
                               const std::string& xPath) const {
    const std::string path = xPath.empty() ? HiscorePath(gameFolder, levelSetPath) : xPath;
    return table_.SaveScore(path, LevelSetReader::SetKeyFor(levelSetPath));
}

} // namespace tolva
