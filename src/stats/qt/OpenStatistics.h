#pragma once
// The menu entry "Levels statistics..." (and F5): refuses with a notice when there is no
// stat.ini, tells that the statistics are the default set's when another set is chosen,
// and then shows the one statistics window, loading it the first time and bringing it to
// the front, unreloaded, when it is open already.
#include <QPointer>

#include <string>

class QWidget;

namespace tolva {

class Dialogs;
class EventLoop;
class frmStatistics;

struct StatisticsEntry {
    std::string StatPath;       // AppPath() + "stat.ini"
    bool IsDefaultSet = true;   // whether the chosen level set is the default one
    Dialogs& Boxes;
    EventLoop& Events;
    QWidget* MainWindow = nullptr;
};

// Gives the window shown, or nullptr if there is no stat.ini. `open` is the caller's
// handle on the window; it becomes null by itself when the window closes.
frmStatistics* OpenStatistics(QPointer<frmStatistics>& open, const StatisticsEntry& entry);

} // namespace tolva
