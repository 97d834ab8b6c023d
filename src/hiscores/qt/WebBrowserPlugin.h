#pragma once
// The contract between the game and its web-browser plug-in. The Internet hiscore window
// needs a whole browser engine (Qt WebEngine, a few hundred megabytes of address space
// and a helper process), which most games never use. So the window lives in a plug-in
// library of its own that the game loads the first time the window is opened, and the
// game's executable does not link the engine at all: start-up time, memory and the
// libraries mapped at start stay those of the game without it.
//
// The plug-in knows Qt and this header, nothing of the game's core: everything the
// window does to the game folder (writing and removing the submission page, the error
// box) comes in as functions, built by the game (HiscoreWebWindows). Both sides are built
// from this tree with the same compiler, so C++ types may cross; the version number
// turns away a plug-in left over from another build of the contract.
#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace tolva {

inline constexpr int WebBrowserPluginVersion = 1;

// The names the plug-in exports.
inline constexpr const char* WebBrowserVersionSymbol = "tolva2_WebBrowserVersion";
inline constexpr const char* ShowWebBrowserSymbol = "tolva2_ShowWebBrowser";

struct WebBrowserRequest {
    QWidget* Owner = nullptr;   // the main window: the window centres on it and takes its icon
    bool SubmitHiscore = false; // true: send the table; false: show the hiscore address
    std::string HiscoreUrl;
    // The submission's work, once the window is up: removes a page left earlier, writes
    // the new one and gives its file (a native path), or nothing if it could not be written.
    std::function<std::optional<std::string>()> PreparePage;
    // Tells the player that the page could not be written; the window closes after it.
    std::function<void()> PageFailed;
    // Removes the page, when the window closes.
    std::function<void()> RemovePage;
    // Opens an address in the system's browser, with a plain request.
    std::function<void(const std::string& url)> OpenInDefaultBrowser;
};

using WebBrowserVersionFunction = int (*)();
// Shows the window modally; returns when it has closed.
using ShowWebBrowserFunction = void (*)(const WebBrowserRequest* request);

} // namespace tolva
