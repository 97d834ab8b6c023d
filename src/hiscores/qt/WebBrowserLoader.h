#pragma once
// Loads the web-browser plug-in the first time the Internet hiscore window is opened and
// keeps it for the rest of the run (a browser engine cannot be unloaded safely). When
// the plug-in is missing, was built for another contract, or the engine it needs is not
// installed, the player is told so in a box and nothing else happens.
//
// The engine's sandbox cannot run for root (as in CI and containers); there the loader
// turns it off before the engine starts, and leaves it on for everybody else.
#include "hiscores/qt/WebBrowserPlugin.h"

#include <QString>

#include <string>

namespace tolva {

class Dialogs;

class WebBrowserLoader {
public:
    // Where the game keeps the plug-in: plugins/ beside its executable.
    static QString DefaultPluginFile();

    // Loads `pluginFile` unless that is done already. Gives the show function, or null
    // with `why` saying what went wrong.
    static ShowWebBrowserFunction Load(const QString& pluginFile, std::string& why);

    // Loads the plug-in and shows the window modally; on failure the stop box says why.
    // False if the window could not be shown.
    static bool Show(const WebBrowserRequest& request, Dialogs& boxes, const QString& pluginFile);
};

} // namespace tolva
