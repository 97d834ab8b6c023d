#pragma once
// What the session shows in a game without a screen (tolva2-cli): its labels are kept as
// last shown, for the `labels` command to print; everything else the session shows has no
// screen to go to and ends here.
#include "session/SessionView.h"

#include <map>
#include <string>
#include <vector>

namespace tolva {

class HeadlessSessionView : public SessionView {
public:
    void SetLabel(SessionLabel label, const std::string& text) override { labels_[label] = text; }
    void ShowSpellPanel(const SpellPanel&) override {}
    void ShowLoading() override {}
    void ShowLoadingText(const std::string&) override {}
    void SetLoadingTopMost(bool) override {}
    void CloseLoading() override {}
    void SetTitle(const std::string&) override {}
    void SetLevelMenuEntry(int, const std::string&) override {}
    void SetSpellToolTip(int, const std::string&) override {}
    void CopyToClipboard(const std::string&) override {}
    void ShowLevelSets(const std::vector<LevelSetEntry>&) override {}
    void ShowStandardBackground() override {}
    void ShowCheatMode(bool) override {}
    void ShowPractice(bool) override {}
    void ShowAutoplayChecked(bool) override {}

    // The text last shown in `label`, empty if none was.
    std::string Label(SessionLabel label) const {
        const auto it = labels_.find(label);
        return it != labels_.end() ? it->second : std::string();
    }

private:
    std::map<SessionLabel, std::string> labels_;
};

} // namespace tolva
