#pragma once
// The widget that shows a picture holder on its host: the back colour, and the picture at
// the top left corner at its own size. It takes no mouse input: the mouse belongs to the
// control or board underneath, which is what the holder decorates.
#include <QWidget>

namespace tolva {

class QtPictureHolder;

class QtPictureView final : public QWidget {
    Q_OBJECT
public:
    QtPictureView(const QtPictureHolder& holder, QWidget* host);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QtPictureHolder& holder_;
};

} // namespace tolva
