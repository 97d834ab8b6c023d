#pragma once
// A session view for tests: every text and panel the session shows is kept as it was last
// shown, and the panels and standard backgrounds are counted, so that a test reads what a
// window would show.
#include "session/SessionView.h"

#include <array>
#include <map>
#include <string>
#include <vector>

namespace tolva {

class RecordingSessionView final : public SessionView {
public:
    void SetLabel(SessionLabel label, const std::string& text) override { Labels[label] = text; }
    void ShowSpellPanel(const SpellPanel& panel) override {
        Panel = panel;
        ++Panels;
    }
    void ShowLoading() override { LoadingShown = true; }
    void ShowLoadingText(const std::string& text) override { LoadingTexts.push_back(text); }
    void SetLoadingTopMost(bool onTop) override { LoadingTopMost = onTop; }
    void CloseLoading() override { LoadingShown = false; }
    void SetTitle(const std::string& title) override { Title = title; }
    void SetLevelMenuEntry(int index, const std::string& caption) override {
        if (index >= 0 && index < static_cast<int>(LevelMenu.size())) LevelMenu[static_cast<std::size_t>(index)] = caption;
    }
    void SetSpellToolTip(int spellNo, const std::string& name) override {
        if (spellNo >= 0 && spellNo < static_cast<int>(SpellToolTips.size()))
            SpellToolTips[static_cast<std::size_t>(spellNo)] = name;
    }
    void CopyToClipboard(const std::string& text) override { Clipboard = text; }
    void ShowLevelSets(const std::vector<LevelSetEntry>& entries) override { LevelSets = entries; }
    void ShowStandardBackground() override { ++StandardBackgrounds; }
    void ShowCheatMode(bool on) override { CheatLabel = on; }
    void ShowPractice(bool on) override { PracticeLabel = on; }
    void ShowAutoplayChecked(bool checked) override { AutoplayMark = checked; }

    std::map<SessionLabel, std::string> Labels;
    SpellPanel Panel;
    int Panels = 0;
    bool LoadingShown = false;
    bool LoadingTopMost = true;
    std::vector<std::string> LoadingTexts;
    std::string Title;
    std::array<std::string, 100> LevelMenu;
    std::array<std::string, 6> SpellToolTips;
    std::string Clipboard;
    std::vector<LevelSetEntry> LevelSets;
    int StandardBackgrounds = 0;
    bool CheatLabel = false;
    bool PracticeLabel = false;
    bool AutoplayMark = false;
};

} // namespace tolva
