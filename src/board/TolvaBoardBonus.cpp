// The bonus display and the two one-shot effects of the spells.
//
// A cleared level pays its bonus on a screen of its own that counts up: the bonus screen
// (BonusPic) covers the board and shows three numbers written with digit pictures, the
// bonus per step, the steps counted so far and the running total. BonusTimer counts one
// step every 130 ms and gives that step's points through NewScore; the tick after the
// last step only ends the count and hands over to RemoveBonusTimer, which hides the
// screen a second later. ShowBonusMovie returns when the count is done; CleanArray waits
// for the screen to go before it starts the next level.
//
//   hidden --ShowBonusMovie--> counting --last tick--> lingering --1 s--> hidden
//
// AnimationEffect and BomEffect play a strip once over a cell and wait for its Finish,
// letting events run, with BoardReady false so that a repaint cannot paint over them.
// With animations off a strip is only put in place; the spell hides it at its end.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

namespace tolva {

namespace {

// The digit picture of a character: No(0..9) for a digit, No(10) for the point; -1 for
// anything else, which has no picture and takes no room.
int DigitPicture(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c == '.') return 10;
    return -1;
}

} // namespace

void TolvaBoard::ShowBonusMovie(double Bonus, std::int16_t Times) {
    NeedResource(BoardResource::BonusScreen);
    levBonus_->Cls();
    picTimes_->Cls();
    picBonus_->Cls();
    BonusCounted = 0;
    BonusSteps = Times;
    BonusPerStep = Bonus;
    bonusPic_->SetBounds({0, 0, platform_.Surface.ScaleWidth(), platform_.Surface.ScaleHeight()});
    bonusPic_->SetVisible(true);
    ShowBonus(*levBonus_, NumberText(Bonus));
    bonusTimer_->SetEnabled(true);
    platform_.Loop.WaitUntil([this] { return !bonusTimer_->Enabled(); });
}

void TolvaBoard::BonusTimer_Timer() {
    if (BonusCounted >= BonusSteps) {
        bonusTimer_->SetEnabled(false);
        removeBonusTimer_->SetEnabled(true);
    } else {
        ++BonusCounted;
        ShowBonus(*picTimes_, NumberText(BonusCounted));
        listener_.NewScore(BonusPerStep);
        PlayDataWave("5.wav");
    }
    ShowBonus(*picBonus_, FormatBonus(BonusCounted * BonusPerStep));
}

void TolvaBoard::RemoveBonusTimer_Timer() {
    bonusPic_->SetVisible(false);
    removeBonusTimer_->SetEnabled(false);
}

void TolvaBoard::ShowBonus(PicturePanel& PicObject, const std::string& sNumber) {
    const std::string text = Trim(sNumber);
    SurfaceRect bounds = PicObject.Bounds();
    bounds.Width = GetWidthOfPictures(text);
    bounds.Left = bonusPic_->ScaleWidth() / 2 - bounds.Width / 2;
    PicObject.SetBounds(bounds);
    PicObject.Cls();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int picture = DigitPicture(text[i]);
        if (picture < 0) continue;
        PicObject.PaintPicture(*no_[static_cast<std::size_t>(picture)], GetWidthOfPictures(text.substr(0, i)), 0);
    }
}

std::string TolvaBoard::FormatBonus(double Point) {
    // Grouped from the left, not from the right: 12345 gives 123.45.
    return GroupDigits(Trim(NumberText(Point)), 5);
}

std::int32_t TolvaBoard::GetWidthOfPictures(const std::string& strNo) const {
    std::int32_t width = 0;
    for (char c : strNo) {
        const int picture = DigitPicture(c);
        if (picture < 0) continue;
        width = CLng(width + no_[static_cast<std::size_t>(picture)]->ScaleWidth());
    }
    return width;
}

bool TolvaBoard::AnimationEffect(double X, double Y) {
    NeedResource(BoardResource::Explosion);
    return PlayEffect(*animation_, "6.wav", X, Y);
}

bool TolvaBoard::BomEffect(double X, double Y) {
    NeedResource(BoardResource::Bomb);
    return PlayEffect(*bom_, "7.wav", X, Y);
}

bool TolvaBoard::PlayEffect(PictureStrip& strip, const std::string& wave, double X, double Y) {
    const std::uint64_t start = levelStarts_;
    BoardReady = false;
    strip.SetVisible(false);
    SurfaceRect bounds = strip.Bounds();
    bounds.Left = X;
    bounds.Top = Y;
    strip.SetBounds(bounds);
    strip.SetVisible(true);
    EffectPlaying = true;
    if (settings_.PlayAnimations) {
        PlayDataWave(wave);
        strip.Play(1);
        platform_.Loop.WaitUntil([this] { return !EffectPlaying; });
    }
    if (FlowDropped(start)) return false;
    BoardReady = true;
    return true;
}

} // namespace tolva
