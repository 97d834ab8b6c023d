#include "testsupport/ScriptedDialogs.h"

#include <stdexcept>

namespace tolva {

void ScriptedDialogs::Unanswered(const std::string& text) {
    if (++unansweredRun_ > UnansweredLimit)
        throw std::runtime_error("the game keeps asking with no answer queued: " + text);
}

MessageResult ScriptedDialogs::MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                                          MessageButtons buttons) {
    shown_.push_back({false, text, title, icon, buttons, {}, false, {}});
    if (messageAnswers_.empty()) {
        Unanswered(text);
        return MessageResult::Ok;
    }
    unansweredRun_ = 0;
    const MessageResult answer = messageAnswers_.front();
    messageAnswers_.pop_front();
    // A box with only OK can't be cancelled.
    return buttons == MessageButtons::Ok ? MessageResult::Ok : answer;
}

std::string ScriptedDialogs::InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& offered) {
    shown_.push_back({true, prompt, title, MessageIcon::None, MessageButtons::OkCancel, offered, false, {}});
    if (inputAnswers_.empty()) {
        Unanswered(prompt);
        return offered;
    }
    unansweredRun_ = 0;
    std::string answer = std::move(inputAnswers_.front());
    inputAnswers_.pop_front();
    return answer;
}

std::string ScriptedDialogs::SaveFileBox(const SaveFileRequest& request) {
    Shown box;
    box.Text = request.Title;
    box.Title = request.Title;
    box.SaveFile = true;
    box.Request = request;
    shown_.push_back(std::move(box));
    if (saveFileAnswers_.empty()) return {};
    std::string answer = std::move(saveFileAnswers_.front());
    saveFileAnswers_.pop_front();
    return answer;
}

} // namespace tolva
