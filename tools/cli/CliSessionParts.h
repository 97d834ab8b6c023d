#pragma once
// What tolva2-cli's headless games (play, autoplay) put in place of the window and the
// services: the platform without a screen, dialogs that answer OK and cancel file boxes (and
// can print what they show), a view that draws nothing (the commands print their own lines),
// a game without a hiscore table or idle mascot.
#include "audio/HeadlessSoundEffects.h"
#include "audio/IdleAnimation.h"
#include "hiscores/HiscoreService.h"
#include "session/SessionServices.h"
#include "session/HeadlessSessionView.h"
#include "support/platform/HeadlessParts.h"
#include "support/platform/HeadlessSurface.h"

#include <iostream>
#include <string>

namespace tolva::cli {

// Message boxes answered OK as Enter would, input boxes with the text offered, save-file
// boxes cancelled (there is nobody to name a file). With an output stream each message
// box is printed as "message: TEXT", one line.
class CliDialogs final : public Dialogs {
public:
    explicit CliDialogs(std::ostream* out = nullptr) : out_(out) {}
    MessageResult MessageBox(const std::string& text, const std::string&, MessageIcon, MessageButtons) override {
        ++Shown;
        if (FirstText.empty()) FirstText = text;
        if (out_ != nullptr) *out_ << "message: " << text << '\n';
        return MessageResult::Ok;
    }
    std::string InputBox(const std::string&, const std::string&, const std::string& offered) override {
        ++Shown;
        return offered;
    }
    std::string SaveFileBox(const SaveFileRequest&) override {
        ++Shown;
        return {};
    }
    int Shown = 0;
    std::string FirstText;

private:
    std::ostream* out_;
};

// The platform of a game without a screen, on the virtual clock; message boxes are printed
// to the stream given after the seed, if any.
using CliPlatform = HeadlessParts<HeadlessSurface, HeadlessSoundEffects, CliDialogs>;

// The commands print their own lines; the session's view draws nothing.
using SilentView = HeadlessSessionView;

// play and autoplay write no file and keep no table: a score has no place in it.
class TableFreeHiscores final : public HiscoreService {
public:
    void CheckIfHiScore(double, std::int16_t) override {}
    void PrintHiScore(std::int16_t, std::int32_t, std::int32_t) override {}
    std::int16_t CheckHiscorePlace(double) const override { return -1; }
};

class NoIdleMascot final : public IdleAnimation {
public:
    void RestartIdle() override {}
};

} // namespace tolva::cli
