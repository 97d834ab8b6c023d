#pragma once
// BoardFocus: the cell the player is looking at, and what a click there would do. Two
// comforts beyond the game's own rules live here, both off the rules' path:
//
//  - the group under the pointer: while the pointer rests on a group that a left click
//    would take away, the group is outlined on the board and the bottom line tells its
//    size and points ("8 BRICKS = 64"). Only while the board waits for a click: never
//    while a spell is armed or at work, during an effect, the bonus count or the closing
//    up after a removal, nor over a lone brick, a spell or a hole. The setting
//    `showgroup` switches it.
//  - play from the keyboard: the arrow keys move a cursor over the cells (it shows with
//    the first arrow key and hides again when the mouse moves over the board), Space or
//    Return clicks the cell under it with the left button, Delete with the right, and the
//    keys 1 to 6 press the six spell buttons. The group under the cursor is outlined as
//    under the pointer.
//
// The keys reach it after the game's own keys (GameSession::Form_KeyDown), which still see
// every key for the key word of the test mode. What it shows is recomputed by Refresh
// from the board as it stands; the window calls it whenever the board has been painted,
// so the outline follows the board through every change. A surface that draws no marks,
// and a player who neither rests the pointer nor presses these keys, see the game exactly
// as it was.
#include "board/BoardMarks.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tolva {

class GameSession;
class SessionView;
class TolvaBoard;
struct GameSettings;

class BoardFocus final : public BoardMarksSource {
public:
    // The key codes it answers, the classic desktop codes of the main window's keys.
    static constexpr std::int16_t KeyReturn = 13;
    static constexpr std::int16_t KeySpace = 32;
    static constexpr std::int16_t ArrowLeft = 37;
    static constexpr std::int16_t ArrowUp = 38;
    static constexpr std::int16_t ArrowRight = 39;
    static constexpr std::int16_t ArrowDown = 40;
    static constexpr std::int16_t KeyDelete = 46;
    static constexpr std::int16_t KeyFirstSpell = 49;   // "1": the first spell button

    BoardFocus(TolvaBoard& board, GameSession& session, GameSettings& settings, SessionView& view);

    // The surface that draws the marks; nullptr for none.
    void SetMarksView(BoardMarksView* view) { marksView_ = view; }

    // The pointer is over the board at a pixel of its surface: the cell under it is the one
    // a click there would hit. Hides the keyboard's cursor.
    void PointerAtPixel(float X, float Y) override;
    // The pointer rests on cell (x, y), which may lie off the board.
    void PointerAt(int x, int y);
    void PointerLeft() override;

    // A key of the main window, after the game's own keys; true if it was one of these.
    bool KeyDown(std::int16_t KeyCode);

    // "Show group under pointer".
    bool ShowGroup() const;
    void SetShowGroup(bool show);

    // Works out the marks afresh from the board and shows them where they changed.
    void Refresh() override;
    const BoardMarks& Marks() const { return marks_; }
    // The bottom line's text for the outlined group; empty when none is outlined.
    static std::string GroupText(const BoardMarks& marks);

private:
    void MoveCursor(int dx, int dy);
    void ClickCursor(std::int16_t button);

    TolvaBoard& board_;
    GameSession& session_;
    GameSettings& settings_;
    SessionView& view_;
    BoardMarksView* marksView_ = nullptr;
    std::optional<BoardCell> pointer_;
    std::optional<BoardCell> cursor_;
    BoardMarks marks_;
    std::string shownText_;
};

} // namespace tolva
