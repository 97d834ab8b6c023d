#pragma once
// The Loading window: a small borderless picture, centred on the screen, that tells
// what the game is loading while the main window is not yet shown. It stays on top of
// other windows; a stop message during the load takes that away for its own time.
#include <QLabel>
#include <QPixmap>
#include <QWidget>

namespace tolva {

class EventLoop;

class Loading final : public QWidget {
public:
    static constexpr int WidthPx = 401;
    static constexpr int HeightPx = 231;

    Loading(EventLoop& loop, const QPixmap& background, const QString& version);

    // Shows the progress text centred in the window and lets pending events run, so
    // that it shows at once.
    void SetLabel(const QString& text);
    QString LabelText() const { return label2_->text(); }

    void SetTopMost(bool onTop);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    EventLoop& loop_;
    QPixmap background_;
    QLabel* label1_;
    QLabel* label2_;
};

} // namespace tolva
