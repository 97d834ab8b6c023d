// The board's pictures from the game's data folder, loaded once at start-up. Each load
// is followed by ResourceLoaded, whose text the Loading window shows; a file that can't
// be loaded leaves its holder as it was and is reported all the same.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

namespace tolva {

void TolvaBoard::LoadResources() {
    const std::string data = AppPath() + "data\\";
    bonusPic_->Holder().LoadFile(data + "12.bmp");
    listener_.ResourceLoaded("Bonus background");
    for (std::size_t i = 0; i < no_.size(); ++i) {
        no_[i]->LoadFile(data + "n" + NumberText(static_cast<double>(i)) + ".bmp");
        listener_.ResourceLoaded("Number gfx" + NumberText(static_cast<double>(i)));
    }
    for (std::size_t i = 0; i < ss_.size(); ++i) {
        ss_[i]->LoadFile(data + "s" + NumberText(static_cast<double>(i)) + ".bmp");
        listener_.ResourceLoaded("Spell gfx" + NumberText(static_cast<double>(i)));
    }
    animation_->LoadStrip(data + "13.bmp");
    listener_.ResourceLoaded("Explotion gfx");
    bounce_->LoadStrip(data + "16.bmp");
    listener_.ResourceLoaded("Bouncing saw gfx");
    bom_->LoadStrip(data + "14.bmp");
    listener_.ResourceLoaded("Bomb gfx");
    aniHint_->LoadStrip(data + "9_H.bmp");
    listener_.ResourceLoaded("Hint animation gfx");

    // The three number lines take the colour the bonus background shows at their own
    // top left corner, so that they blend into it.
    for (PicturePanel* line : {levBonus_.get(), picTimes_.get(), picBonus_.get()}) {
        const std::int32_t colour = bonusPic_->Holder().Point(line->Bounds().Left, line->Bounds().Top);
        if (colour >= 0) line->Holder().SetBackColor(colour);
    }
}

} // namespace tolva
