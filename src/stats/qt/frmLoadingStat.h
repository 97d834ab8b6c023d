#pragma once
// frmLoadingStat: the small progress window that stands on top while the statistics
// load. No caption, no taskbar entry, topmost; one line of text, Label1, that the load
// sets to "Loading statistics for level:" and the level, then "Making list...".
//
// The window is 161 x 30 pixels, as laid out, and grows to its text where a font of this
// system needs more room than that: a progress line cut off in the middle tells nothing.
#include <QWidget>

#include <string>

class QLabel;

namespace tolva {

class frmLoadingStat final : public QWidget {
    Q_OBJECT
public:
    static constexpr int FormWidth = 161;
    static constexpr int FormHeight = 30;

    // Centred on `owner`'s frame (on the screen if there is none).
    explicit frmLoadingStat(QWidget* owner);

    void SetCaption(const std::string& text);
    QLabel* Label1() const { return Label1_; }

private:
    void FitAndCentre();

    QWidget* owner_;
    QLabel* Label1_ = nullptr;
};

} // namespace tolva
