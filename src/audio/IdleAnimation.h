#pragma once
// The game's idle life, as the session sees it: any score holds the idle mascot off for
// another twenty seconds. The mascot itself (its strip, its timer, its sound) is
// IdleMascot's.
namespace tolva {

class IdleAnimation {
public:
    virtual ~IdleAnimation() = default;
    virtual void RestartIdle() = 0;
};

} // namespace tolva
