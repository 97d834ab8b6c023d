#include "board/qt/BuiltinBoardPictures.h"

#include "board/TolvaBoard.h"
#include "support/platform/qt/QtPictureHolder.h"

#include <QString>

namespace tolva {

void GiveBuiltinPictures(TolvaBoard& board) {
    for (int i = 0; i < 10; ++i) {
        auto& brick = static_cast<QtPictureHolder&>(board.Gfx(i));
        brick.SetImage(ReadBuiltinPicture(QString(":/builtin/bricks/%1.bmp").arg(i)));
    }
    static_cast<QtPictureHolder&>(board.Pipette()).SetImage(ReadBuiltinPicture(":/builtin/pointers/pipette.png"));
}

std::unique_ptr<QtPictureHolder> MakeStandardBackground() {
    auto eBack = std::make_unique<QtPictureHolder>("eBack");
    eBack->SetImage(ReadBuiltinPicture(":/builtin/eBack.rgb32"));
    return eBack;
}

} // namespace tolva
