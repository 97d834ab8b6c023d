#pragma once
// The picture store of the game on screen. Holders and strips are made on a host widget,
// the board's: a strip is an IA control over the board, and a holder that the board shows
// (the bonus screen) appears over it too. Holders that only feed the board's painting
// never make a widget.
#include "support/platform/EventLoop.h"
#include "support/platform/PictureStore.h"

class QWidget;

namespace tolva {

class QtPictureStore final : public PictureStore {
public:
    QtPictureStore(EventLoop& loop, QWidget* host) : loop_(loop), host_(host) {}

    std::unique_ptr<PictureHolder> CreateHolder(const std::string& name) override;
    std::unique_ptr<PictureStrip> CreateStrip(const std::string& name) override;

private:
    EventLoop& loop_;
    QWidget* host_;
};

} // namespace tolva
