#pragma once
// The headless session view for tests: besides the labels it keeps the spell panel, the
// clipboard, the cheat and autoplay marks as last shown, and counts the standard
// backgrounds, so that a test reads what a window would show.
#include "session/HeadlessSessionView.h"

#include <string>

namespace tolva {

class RecordingSessionView final : public HeadlessSessionView {
public:
    void ShowSpellPanel(const SpellPanel& panel) override { Panel = panel; }
    void CopyToClipboard(const std::string& text) override { Clipboard = text; }
    void ShowStandardBackground() override { ++StandardBackgrounds; }
    void ShowCheatMode(bool on) override { CheatLabel = on; }
    void ShowAutoplayChecked(bool checked) override { AutoplayMark = checked; }

    SpellPanel Panel;
    std::string Clipboard;
    int StandardBackgrounds = 0;
    bool CheatLabel = false;
    bool AutoplayMark = false;
};

} // namespace tolva
