#pragma once
// Message and input boxes. Both block until answered and leave the timers running.
#include <string>

namespace tolva {

enum class MessageIcon { None, Stop, Exclamation, Information, Question, Warning };
enum class MessageButtons { Ok, OkCancel };
enum class MessageResult { Ok, Cancel };

class Dialogs {
public:
    virtual ~Dialogs() = default;

    virtual MessageResult MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                                     MessageButtons buttons) = 0;
    // Gives the text entered, or an empty text on Cancel.
    virtual std::string InputBox(const std::string& prompt, const std::string& title,
                                 const std::string& offered) = 0;
};

} // namespace tolva
