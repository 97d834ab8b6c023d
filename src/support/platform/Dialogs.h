#pragma once
// Message, input and file boxes. All block until answered and leave the timers running.
#include <string>

namespace tolva {

enum class MessageIcon { None, Stop, Exclamation, Information, Question, Warning };
enum class MessageButtons { Ok, OkCancel };
enum class MessageResult { Ok, Cancel };

// A box that asks where to save a file.
struct SaveFileRequest {
    std::string Title;
    // Pairs of description and patterns, as the classic file boxes take them:
    // "Tolva hiscore-file|*.hi", several patterns of one pair separated by ';'.
    std::string Filter;
    std::string InitialFolder;      // a native path; empty for the box's own choice
    bool OverwritePrompt = true;    // ask before a chosen file that exists is replaced
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    virtual MessageResult MessageBox(const std::string& text, const std::string& title, MessageIcon icon,
                                     MessageButtons buttons) = 0;
    // Gives the text entered, or an empty text on Cancel.
    virtual std::string InputBox(const std::string& prompt, const std::string& title,
                                 const std::string& offered) = 0;
    // Gives the chosen file as a native path, or an empty text on Cancel.
    virtual std::string SaveFileBox(const SaveFileRequest& request) = 0;
};

} // namespace tolva
