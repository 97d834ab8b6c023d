#pragma once
// Dialogs of the headless platform: each box is written down, and answered from a script
// of answers queued beforehand. A box with no answer queued gets what pressing Enter
// gives: OK, or the text offered in an input box; a save-file box with no answer queued
// is cancelled, as Enter on its empty name field does not choose a file. A game that asks
// again and again without an answer queued (a loop that a fault keeps from ending) is
// stopped with an exception after UnansweredLimit boxes, so its test fails at once
// instead of running into the suite's time limit.
#include "support/platform/Dialogs.h"

#include <deque>
#include <string>
#include <vector>

namespace tolva {

class ScriptedDialogs final : public Dialogs {
public:
    struct Shown {
        bool Input = false;           // an input box rather than a message box
        std::string Text;             // the message, or the prompt
        std::string Title;
        MessageIcon Icon = MessageIcon::None;
        MessageButtons Buttons = MessageButtons::Ok;
        std::string Offered;          // input boxes only
        bool SaveFile = false;        // a save-file box, asked for as in Request
        SaveFileRequest Request;
    };

    MessageResult MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                             MessageButtons buttons) override;
    std::string InputBox(const std::string& prompt, const std::string& title, const std::string& offered) override;
    std::string SaveFileBox(const SaveFileRequest& request) override;

    void QueueMessageAnswer(MessageResult answer) { messageAnswers_.push_back(answer); }
    void QueueInputAnswer(std::string answer) { inputAnswers_.push_back(std::move(answer)); }
    // The file the next save-file box chooses; an empty text cancels it.
    void QueueSaveFileAnswer(std::string path) { saveFileAnswers_.push_back(std::move(path)); }

    const std::vector<Shown>& ShownBoxes() const { return shown_; }

    static constexpr int UnansweredLimit = 1000;

private:
    void Unanswered(const std::string& text);

    int unansweredRun_ = 0;
    std::deque<MessageResult> messageAnswers_;
    std::deque<std::string> inputAnswers_;
    std::deque<std::string> saveFileAnswers_;
    std::vector<Shown> shown_;
};

} // namespace tolva
