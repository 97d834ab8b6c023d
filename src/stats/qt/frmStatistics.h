#pragma once
// frmStatistics: the statistics screen. A fixed window, not modal, that shows stat.ini as
// it was when it was loaded: 100 level rows and a totals row in a list that a scroll bar
// moves, with "Refresh", "Print", "Clear all statistics" and "Close" below it. The game
// goes on behind it; only "Refresh" reads the file again.
//
// Loading reads 1,600 keys one by one, so it shows the hourglass and frmLoadingStat and
// lets pending events run once per level (the game's timers and clicks go on meanwhile).
// The buttons of this window are turned away while a load runs, so that a load never
// starts inside another.
#include "stats/StatTable.h"
#include "stats/qt/StatListPainter.h"

#include <QWidget>

#include <string>

class QFrame;
class QLabel;
class QPushButton;
class QScrollBar;

namespace tolva {

class Dialogs;
class EventLoop;

class frmStatistics final : public QWidget {
    Q_OBJECT
public:
    static constexpr int FormWidth = 634;
    static constexpr int FormHeight = 459;

    // A window for the statistics in `statPath` (AppPath() + "stat.ini"), with its
    // questions asked through `dialogs` and its load yielding through `events`. It takes
    // `mainWindow`'s icon and stands over it; it deletes itself when it closes.
    frmStatistics(std::string statPath, Dialogs& dialogs, EventLoop& events, QWidget* mainWindow);

    // The load sequence: read stat.ini into the table and draw the list.
    void Load();
    // Draws the list again from the table in memory; the list goes back to the top.
    void PrintStat();

    // "Print": asks, prints on the default printer, and says it was sent.
    void Print();
    // "Clear all statistics": asks, deletes stat.ini and closes the window.
    void ClearAll();

    const StatTable& Table() const { return table_; }
    const StatList& List() const { return list_; }
    bool Loading() const { return loading_; }

    QScrollBar* Scroller() const { return Scroller_; }
    QLabel* DS() const { return DS_; }
    QWidget* ListFrame() const { return listClip_; }
    QFrame* Picture1() const { return Picture1_; }
    QPushButton* Command1() const { return Command1_; }   // "Close"
    QPushButton* Command2() const { return Command2_; }   // "Clear all statistics"
    QPushButton* Command3() const { return Command3_; }   // "Print"
    QPushButton* Command4() const { return Command4_; }   // "Refresh"

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    // Refused while a load runs: the window (deleted on close) holds the progress window
    // and the table the load is still filling.
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildHeader();
    void BuildList();
    void BuildButtons();
    void CentreOnScreen();

    std::string statPath_;
    Dialogs& dialogs_;
    EventLoop& events_;
    StatTable table_;
    StatList list_;
    bool loading_ = false;

    QFrame* Picture1_ = nullptr;
    QFrame* Picture2_ = nullptr;
    QWidget* listClip_ = nullptr;
    QLabel* DS_ = nullptr;
    QScrollBar* Scroller_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    QPushButton* Command3_ = nullptr;
    QPushButton* Command4_ = nullptr;
};

} // namespace tolva
