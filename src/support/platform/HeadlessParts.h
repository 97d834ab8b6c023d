#pragma once
// The platform of a game without a screen in one object: the virtual clock, the bitmap-reading
// picture store and seeded random numbers, with the surface, sound effects (given the loop if
// they keep time on it) and dialogs its user chooses: tolva2-cli's plain ones, or recorders.
#include "support/platform/BoardPlatform.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/HeadlessPictureStore.h"
#include "support/platform/SeededRandom.h"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace tolva {

template <class SurfaceType, class SoundType, class DialogsType>
class HeadlessParts {
public:
    template <class... DialogArgs>
    explicit HeadlessParts(std::uint64_t seed = 1, DialogArgs&&... dialogArgs)
        : Pictures(Loop), Sound(MakeSound(Loop)), Dialog(std::forward<DialogArgs>(dialogArgs)...), Rng(seed) {}
    HeadlessParts(const HeadlessParts&) = delete;
    HeadlessParts& operator=(const HeadlessParts&) = delete;

    BoardPlatform Platform() { return {Loop, Surface, Pictures, Sound, Dialog, Rng}; }

    HeadlessEventLoop Loop;
    SurfaceType Surface;
    HeadlessPictureStore Pictures;
    SoundType Sound;
    DialogsType Dialog;
    SeededRandom Rng;

private:
    static SoundType MakeSound(EventLoop& loop) {
        if constexpr (std::is_constructible_v<SoundType, EventLoop&>) return SoundType(loop);
        else return SoundType();
    }
};

} // namespace tolva
