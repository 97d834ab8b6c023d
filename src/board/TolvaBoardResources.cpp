// The board's pictures from the game's data folder. Each load is followed by
// ResourceLoaded, whose text the Loading window shows; a file that can't be loaded leaves
// its holder as it was and is reported all the same.
//
// The game itself loads only the spells once its window is up: the bonus screen with its
// digits and each effect strip wait for the first time they are shown. Most of a game's
// first level never shows them, and the bonus screen alone is a megabyte decoded.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

namespace tolva {

void TolvaBoard::LoadResources(bool whenFirstNeeded) {
    pendingResources_ = {};
    const auto take = [&](BoardResource resource) {
        if (whenFirstNeeded)
            pendingResources_[static_cast<std::size_t>(resource)] = true;
        else
            LoadResource(resource);
    };
    take(BoardResource::BonusScreen);
    const std::string data = AppPath() + "data\\";
    for (std::size_t i = 0; i < ss_.size(); ++i) {
        ss_[i]->LoadFile(data + "s" + NumberText(static_cast<double>(i)) + ".bmp");
        listener_.ResourceLoaded("Spell gfx" + NumberText(static_cast<double>(i)));
    }
    take(BoardResource::Explosion);
    take(BoardResource::Saw);
    take(BoardResource::Bomb);
    take(BoardResource::Hint);
}

void TolvaBoard::NeedResource(BoardResource resource) {
    bool& pending = pendingResources_[static_cast<std::size_t>(resource)];
    if (!pending) return;
    pending = false;
    LoadResource(resource);
}

void TolvaBoard::LoadResource(BoardResource resource) {
    const std::string data = AppPath() + "data\\";
    switch (resource) {
    case BoardResource::BonusScreen:
        bonusPic_->Holder().LoadFile(data + "12.bmp");
        listener_.ResourceLoaded("Bonus background");
        for (std::size_t i = 0; i < no_.size(); ++i) {
            no_[i]->LoadFile(data + "n" + NumberText(static_cast<double>(i)) + ".bmp");
            listener_.ResourceLoaded("Number gfx" + NumberText(static_cast<double>(i)));
        }
        // The three number lines take the colour the bonus background shows at their own
        // top left corner, so that they blend into it.
        for (PicturePanel* line : {levBonus_.get(), picTimes_.get(), picBonus_.get()}) {
            const std::int32_t colour = bonusPic_->Holder().Point(line->Bounds().Left, line->Bounds().Top);
            if (colour >= 0) line->Holder().SetBackColor(colour);
        }
        break;
    case BoardResource::Explosion:
        animation_->LoadStrip(data + "13.bmp");
        listener_.ResourceLoaded("Explotion gfx");
        break;
    case BoardResource::Saw:
        bounce_->LoadStrip(data + "16.bmp");
        listener_.ResourceLoaded("Bouncing saw gfx");
        break;
    case BoardResource::Bomb:
        bom_->LoadStrip(data + "14.bmp");
        listener_.ResourceLoaded("Bomb gfx");
        break;
    case BoardResource::Hint:
        aniHint_->LoadStrip(data + "9_H.bmp");
        listener_.ResourceLoaded("Hint animation gfx");
        break;
    case BoardResource::Count:
        break;
    }
}

} // namespace tolva
