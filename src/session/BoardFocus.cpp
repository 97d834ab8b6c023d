#include "session/BoardFocus.h"

#include "board/TolvaBoard.h"
#include "session/GameSession.h"
#include "session/SessionView.h"
#include "settings/GameSettings.h"
#include "support/ZenkorModule.h"

#include <algorithm>

namespace tolva {

BoardFocus::BoardFocus(TolvaBoard& board, GameSession& session, GameSettings& settings, SessionView& view)
    : board_(board), session_(session), settings_(settings), view_(view) {}

void BoardFocus::PointerAtPixel(float X, float Y) {
    // The same cell a click at this pixel would hit: the cell the pixel lies in, none off
    // the board.
    const float x = board_.GetX(X);
    const float y = board_.GetY(Y);
    const float last = static_cast<float>(board_.xBricks() - 1);
    if (x >= 0 && x <= last && y >= 0 && y <= last)
        PointerAt(static_cast<int>(x), static_cast<int>(y));
    else
        PointerAt(-1, -1);
}

void BoardFocus::PointerAt(int x, int y) {
    const int n = board_.xBricks();
    std::optional<BoardCell> at;
    if (x >= 0 && y >= 0 && x < n && y < n) at = BoardCell{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
    // Most moves stay inside one cell; the board itself has not changed by a move.
    if (at == pointer_ && !cursor_) return;
    pointer_ = at;
    cursor_.reset();   // the mouse is back in charge
    Refresh();
}

void BoardFocus::PointerLeft() {
    pointer_.reset();
    Refresh();
}

bool BoardFocus::KeyDown(std::int16_t KeyCode) {
    switch (KeyCode) {
    case ArrowLeft: MoveCursor(-1, 0); return true;
    case ArrowRight: MoveCursor(1, 0); return true;
    case ArrowUp: MoveCursor(0, -1); return true;
    case ArrowDown: MoveCursor(0, 1); return true;
    case KeySpace:
    case KeyReturn: ClickCursor(1); return true;
    case KeyDelete: ClickCursor(2); return true;
    default: break;
    }
    if (KeyCode >= KeyFirstSpell && KeyCode < KeyFirstSpell + SpellCount) {
        session_.sp_Click(static_cast<std::int16_t>(KeyCode - KeyFirstSpell));
        Refresh();
        return true;
    }
    return false;
}

void BoardFocus::MoveCursor(int dx, int dy) {
    const int last = board_.xBricks() - 1;
    if (!cursor_) {
        // The first arrow shows the cursor where the eye already is: on the pointer's cell,
        // or on the bottom left, where bricks stay longest.
        cursor_ = pointer_.value_or(BoardCell{0, static_cast<std::int16_t>(last)});
    } else {
        cursor_->X = static_cast<std::int16_t>(std::clamp(cursor_->X + dx, 0, last));
        cursor_->Y = static_cast<std::int16_t>(std::clamp(cursor_->Y + dy, 0, last));
    }
    Refresh();
}

void BoardFocus::ClickCursor(std::int16_t button) {
    if (!cursor_) return;   // no cursor on screen, nothing to click
    float x = cursor_->X;
    float y = cursor_->Y;
    board_.ClickOnBrick(x, y, button);
    Refresh();
}

bool BoardFocus::ShowGroup() const { return settings_.ShowGroup; }

void BoardFocus::SetShowGroup(bool show) {
    settings_.ShowGroup = show;
    Refresh();
}

void BoardFocus::Refresh() {
    BoardMarks now;
    now.Side = board_.xBricks();
    // A level of another side may have come meanwhile: the cursor stays on the board.
    if (cursor_) {
        const int last = now.Side - 1;
        cursor_->X = static_cast<std::int16_t>(std::min<int>(cursor_->X, last));
        cursor_->Y = static_cast<std::int16_t>(std::min<int>(cursor_->Y, last));
        now.Cursor = cursor_;
    }
    const std::optional<BoardCell> eye = cursor_ ? cursor_ : pointer_;
    if (eye && settings_.ShowGroup && board_.AwaitsClick()) now.Group = GroupOfCell(board_, eye->X, eye->Y);
    if (now == marks_) return;
    marks_ = std::move(now);
    if (marksView_ != nullptr) marksView_->ShowMarks(marks_);
    const std::string text = GroupText(marks_);
    if (text != shownText_) {
        shownText_ = text;
        view_.SetLabel(SessionLabel::Group, text);
    }
}

std::string BoardFocus::GroupText(const BoardMarks& marks) {
    if (marks.Group.empty()) return {};
    return NumberText(static_cast<double>(marks.Group.size())) + " BRICKS = " + NumberText(marks.Points());
}

} // namespace tolva
