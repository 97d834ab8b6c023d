#pragma once
// How the hiscore table and the level sets are tied together, the same on screen and
// without one: the set's table is loaded with the set (the Loading window's labels on
// the view, which gives up its always-on-top state around a corrupted table's message),
// and written to the set's hiscore.hi before the set changes, at shutdown (the caller's
// SaveHiscores calls HiscoreSaver) and as soon as a new entry has its initials.
namespace tolva {

class Dialogs;
class GameLevelSets;
class HiscoreKeeper;
class SessionView;

void ConnectHiscoreTable(GameLevelSets& sets, HiscoreKeeper& table, SessionView& view, Dialogs& dialogs);

} // namespace tolva
