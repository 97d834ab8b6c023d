#pragma once
// The windows of the game that a key or a menu entry opens. The session and the main
// window ask for a window by name; each window's own room registers how it opens, in the
// composition root, so that adding a window touches its own folder and that one line, and
// no switch anywhere. A window nobody registered (a game without a screen) opens nothing.
// It sits in support/, below the session that asks and the windows that register.
#include <functional>
#include <map>

namespace tolva {

enum class GameWindow {
    Help,          // F1, "Help..."
    Settings,      // F4, "Settings..."
    Statistics,    // F5, "Levels statistics..."
    About,         // the ABOUT button
    ShowInternetHiscores,     // "Show Internet hiscores"
    SubmitInternetHiscores,   // "Submit to Internet Hiscores"
    ExportHiscore,            // "Export hiscore file..."
};

class WindowOpener {
public:
    void Register(GameWindow window, std::function<void()> open) { opens_[window] = std::move(open); }
    bool Has(GameWindow window) const { return opens_.count(window) != 0; }
    void Open(GameWindow window) const {
        const auto it = opens_.find(window);
        if (it != opens_.end() && it->second) it->second();
    }

private:
    std::map<GameWindow, std::function<void()>> opens_;
};

} // namespace tolva
