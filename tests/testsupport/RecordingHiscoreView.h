#pragma once
// The headless hiscore view for tests: every drawing of the table is written down with
// its texts and colours, and so are the initials shown after each key and the entries
// asked for. BeforeEachKey lets a test pass time on its clock while the "player" types.
#include "hiscores/HeadlessHiscoreView.h"
#include "hiscores/HiscoreRows.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tolva {

class RecordingHiscoreView final : public HeadlessHiscoreView {
public:
    struct Drawing {
        std::int16_t HighlightPlace = -1;
        std::int32_t HighlightColor = 0;
        std::int32_t HighlightTextColor = 0;
        std::array<HiscoreRow, Hiscores::Places> Rows;
    };

    void Print(const Hiscores& table, std::int16_t place, std::int32_t colour, std::int32_t textColour) override {
        drawings_.push_back(Drawing{place, colour, textColour, HiscoreRows(table)});
    }
    std::string AskInitials() override {
        ++asked_;
        return HeadlessHiscoreView::AskInitials();
    }

    std::function<void()> BeforeEachKey;

    const std::vector<Drawing>& Drawings() const { return drawings_; }
    const std::vector<std::string>& ShownInitials() const { return shownInitials_; }
    int InitialsAsked() const { return asked_; }

private:
    void BeforeKey() override {
        if (BeforeEachKey) BeforeEachKey();
    }
    void InitialsShown(const std::string& text) override { shownInitials_.push_back(text); }

    std::vector<Drawing> drawings_;
    std::vector<std::string> shownInitials_;
    int asked_ = 0;
};

} // namespace tolva
