#include "session/GameSession.h"

#include "board/TolvaBoard.h"
#include "shared/GameText.h"
#include "session/LevelCodes.h"
#include "stats/StatLog.h"
#include "support/ZenkorModule.h"

#include <cctype>
#include <string_view>
#include <vector>

namespace tolva {
namespace {

constexpr std::int32_t SpellSoundGap = 1000;
constexpr std::int32_t Red = 255;           // colours are 0xBBGGRR
// The classic codes of the keys the main window answers.
constexpr std::int16_t KeyF1 = 112;
constexpr std::int16_t KeyF2 = 113;
constexpr std::int16_t KeyF4 = 115;
constexpr std::int16_t KeyF5 = 116;
constexpr std::int16_t KeyF12 = 123;
constexpr std::int16_t KeyH = 72;
// The limits of "Give bonus"; both are allowed.
constexpr double MaxGivenBonus = 100000;
constexpr double MaxGivenTimes = 99;

bool ValidSpell(std::int16_t n) { return n >= 0 && n < SpellCount; }

constexpr const char* PracticeMessage =
    "A move was taken back in this game: it was played for practice, and its score does not go into the "
    "hiscore table.";

} // namespace

GameSession::GameSession(LevelModule& game, const GameSettings& settings, const BoardPlatform& platform,
                         SessionView& view, const SessionServices& services)
    : game_(game), settings_(settings), platform_(platform), view_(view), services_(services) {
    for (std::size_t i = 0; i < SpellNameList.size(); ++i) SpellNames[i] = SpellNameList[i];
    soundTimer_ = platform_.Loop.CreateTimer(false);
    soundTimer_->SetInterval(SpellSoundGap);
    soundTimer_->OnTick = [this] { soundTimer_->SetEnabled(false); };
}

GameSession::~GameSession() = default;

// ---- the game -----------------------------------------------------------------------------

bool GameSession::NewGame(std::int16_t StartAtLevel) {
    if (GameRunning) {
        const auto answer = platform_.Dialog.MessageBox("Are you sure you want to quit current game ?", "Restart game?",
                                                        MessageIcon::Warning, MessageButtons::OkCancel);
        if (answer != MessageResult::Ok) return false;
        OfferScoreToTable();
    }
    if (practice_) {
        practice_ = false;
        view_.ShowPractice(false);
    }
    game_.ActiveSpell = NoSpell;
    SpellStock.fill(0);
    UpdateSpells();
    Score = 0;
    game_.CurLevelNo = 1;
    UpdateScore(0);
    services_.Hiscores.PrintHiScore(-1, 0, 0);
    view_.SetLabel(SessionLabel::Level, "1");
    view_.SetLabel(SessionLabel::Bonus, "0");
    view_.SetLabel(SessionLabel::LevelCode, "");
    LastLevel = 0;
    std::int16_t level = StartAtLevel;
    board_->NewGame(level);
    if (!game_.CheatMode) ScoreFrozen = false;
    GameRunning = true;
    return true;
}

void GameSession::OfferScoreToTable() {
    if (practice_) {
        platform_.Dialog.MessageBox(PracticeMessage, std::string(GameTitle), MessageIcon::Information,
                                    MessageButtons::Ok);
        return;
    }
    services_.Hiscores.CheckIfHiScore(Score, game_.CurLevelNo);
}

PlayState GameSession::CapturePlay() const {
    PlayState state;
    state.Level = game_.CurLevelNo;
    state.Side = board_->xBricks();
    state.Bricks = board_->Bricks;
    state.Spells = board_->Spells;
    state.Score = Score;
    state.SpellStock = SpellStock;
    state.SpellClicks = SpellClicks;
    state.LevelClicks = LevelClicks;
    state.LastClickCount = LastClickCount;
    state.BonusTimes = game_.BonusTimes;
    state.CheatMode = game_.CheatMode;
    state.ScoreFrozen = ScoreFrozen;
    state.Practice = practice_;
    return state;
}

void GameSession::RestorePlay(const PlayState& state) {
    board_->Bricks = state.Bricks;
    board_->Spells = state.Spells;
    Score = state.Score;
    SpellStock = state.SpellStock;
    SpellClicks = state.SpellClicks;
    LevelClicks = state.LevelClicks;
    LastClickCount = state.LastClickCount;
    game_.BonusTimes = state.BonusTimes;
    game_.ActiveSpell = NoSpell;
    if (game_.CheatMode != state.CheatMode) {
        game_.CheatMode = state.CheatMode;
        view_.ShowCheatMode(game_.CheatMode);
    }
    ScoreFrozen = state.ScoreFrozen;
    if (state.Practice) MarkPractice();
    // A hint still showing pointed at a move of the board that was.
    PictureStrip& hint = board_->AniHint();
    if (hint.IsPlaying()) hint.StopPlay();
    hint.SetVisible(false);
    board_->DrawBoard(-1, -1, false);
    UpdateScore(Score);
    // The place the score had reached is no longer marked in the table.
    services_.Hiscores.PrintHiScore(-1, 0, 0);
    UpdateSpells();
    ShowClicks();
    view_.SetLabel(SessionLabel::Bonus, NumberText(game_.BonusTimes));
}

void GameSession::MarkPractice() {
    if (practice_) return;
    practice_ = true;
    view_.ShowPractice(true);
}

bool GameSession::ResumeGame(const PlayState& state) {
    resuming_ = true;
    const bool started = NewGame(state.Level);
    resuming_ = false;
    if (!started) return false;
    RestorePlay(state);
    return true;
}

void GameSession::UpdateScore(double ScoreP) {
    view_.SetLabel(SessionLabel::Score, FormatScore(ScoreP));
}

std::string GameSession::FormatScore(double Value) { return GroupDigits(NumberText(Value), 9); }

void GameSession::UpdateSpells() {
    SpellPanel panel;
    for (std::size_t i = 0; i < panel.Counts.size(); ++i)
        panel.Counts[i] = SpellStock[i] < 1 ? "0" : NumberText(SpellStock[i]);
    panel.Active = ValidSpell(game_.ActiveSpell) ? game_.ActiveSpell : NoSpell;
    if (panel.Active != NoSpell) panel.ActiveName = SpellNames[static_cast<std::size_t>(panel.Active)];
    view_.ShowSpellPanel(panel);
}

// ---- the spell bar ---------------------------------------------------------------------------

void GameSession::sp_Click(std::int16_t Index) {
    if (game_.SpellRunning || !GameRunning || !ValidSpell(Index)) return;
    if (game_.ActiveSpell != NoSpell) {
        const std::int16_t was = game_.ActiveSpell;
        game_.ActiveSpell = NoSpell;
        UpdateSpells();
        if (was == Index) return;
    }
    if (SpellStock[static_cast<std::size_t>(Index)] < 1 && !game_.CheatMode) return;
    game_.ActiveSpell = Index;
    UpdateSpells();
}

void GameSession::ActiveSpell_Click() {
    if (game_.SpellRunning) return;
    game_.ActiveSpell = NoSpell;
    UpdateSpells();
}

// ---- the Game menu ---------------------------------------------------------------------------

void GameSession::NewGameWithLevelCode_Click() {
    // The wrong text is offered again for mending, until it is right or the box is left empty.
    std::string entry;
    for (;;) {
        entry = platform_.Dialog.InputBox("LEVEL-CODE:", "ENTER LEVEL-CODE", entry);
        if (entry.empty()) return;
        std::int16_t found = LevelCodes::Find(entry);
        if (found < 1) found = LevelCodes::FindClipboardText(entry);
        if (found > 0) {
            NewGame(found);
            return;
        }
        platform_.Dialog.MessageBox("INVALID LEVEL-CODE!", std::string(GameTitle), MessageIcon::Stop,
                                    MessageButtons::Ok);
    }
}

void GameSession::mnuEndGame_Click() {
    if (GameRunning) {
        const auto answer = platform_.Dialog.MessageBox("Are you sure you want to end this game ?",
                                                        std::string(GameTitle), MessageIcon::Warning,
                                                        MessageButtons::OkCancel);
        if (answer != MessageResult::Ok) return;
    }
    board_->SetGameOver();
}

void GameSession::lbLevelCode_Click() {
    if (!IsDefaultSet) return;
    const auto answer = platform_.Dialog.MessageBox("Copy level-code to clipboard ?", std::string(GameTitle),
                                                    MessageIcon::Question, MessageButtons::OkCancel);
    if (answer != MessageResult::Ok) return;
    view_.CopyToClipboard(LevelCodes::ClipboardText(game_.CurLevelNo));
}

GameMenuState GameSession::Game_Click() {
    GameMenuState state;
    state.EndGame = GameRunning;
    state.LevelCode = IsDefaultSet;
    state.DefaultSetOnly = IsDefaultSet;
    return state;
}

// ---- the PC speaker ----------------------------------------------------------------------------

void GameSession::SpeakerEvent(std::int16_t EventSound) {
    // Frequency and length of each beep; a frequency of 0 is a pause.
    struct Beep { std::int32_t hz, ms; };
    static const std::vector<Beep> signals[4] = {
        {{1000, 200}, {500, 200}},
        {{1500, 200}, {2000, 200}, {0, 200}, {2000, 200}},
        {},
        {{3000, 100}, {2500, 100}, {2000, 100}, {0, 100}, {1500, 200}, {2000, 200}, {0, 200}, {2000, 200}},
    };
    if (EventSound < 0 || EventSound > 3) return;
    for (const Beep& b : signals[EventSound]) {
        if (b.hz == 0) platform_.Loop.Pause(b.ms);
        else platform_.Sound.SpeakerBeep(b.hz, b.ms);
    }
}

// ---- autoplay ------------------------------------------------------------------------------------

void GameSession::WaitLettingEventsRun(std::int32_t ms) {
    // A one-shot timer marks the end, so the wait sleeps on a real loop and runs on the
    // virtual clock in tests.
    bool done = false;
    auto timer = platform_.Loop.CreateTimer(true);
    timer->SetInterval(ms);
    timer->OnTick = [&] { done = true; timer->SetEnabled(false); };
    timer->SetEnabled(true);
    platform_.Loop.WaitUntil([&] { return done; });
}

void GameSession::AutoPlay() {
    // Counted on the stack so that CanDoNextMove knows a move is under way, also when a
    // wait of the game throws out of it.
    struct Depth {
        int& depth;
        explicit Depth(int& d) : depth(d) { ++depth; }
        ~Depth() { --depth; }
    } depth(autoPlayDepth_);
    do {
        nextMoveDue_ = false;
        if (!AutoplayChecked) return;
        MakeAutoMove();
    } while (nextMoveDue_);
}

void GameSession::MakeAutoMove() {
    float x = 0, y = 0;
    bool spellAimed = false;
    // Nearly always a plain move; about one move in three hundred tries a spell, and uses
    // it only if it is in stock. Entry 6 of the stock is never filled.
    if (CInt(platform_.Rng.Next() * 3000) > 2990) {
        const std::int16_t s = CInt(platform_.Rng.Next() * 6);
        if (SpellStock[static_cast<std::size_t>(s)] >= 1) {
            sp_Click(s);
            board_->GetRandomBrick(x, y);
            if (s == SpellTestTube) {
                // The test tube takes two clicks: the cell to recolour, a second later the
                // cell whose colour it pours.
                board_->ClickOnBrick(x, y, 1);
                WaitLettingEventsRun(1000);
                board_->GetRandomBrick(x, y);
            }
            spellAimed = true;
        }
    }
    if (!spellAimed) board_->GetRandomMoveableBrick(x, y);
    board_->ClickOnBrick(x, y, 1);
    platform_.Loop.DoEvents();
}

void GameSession::SetAutoplayChecked(bool checked) {
    AutoplayChecked = checked;
    view_.ShowAutoplayChecked(checked);
}

// ---- the keys of the main window and the test mode -----------------------------------------------

void GameSession::Form_KeyDown(std::int16_t KeyCode) {
    switch (KeyCode) {
    case KeyF1: services_.Windows.Open(GameWindow::Help); break;
    case KeyF2: NewGameMnu_Click(); break;
    case KeyF4: services_.Windows.Open(GameWindow::Settings); break;
    case KeyF5: services_.Windows.Open(GameWindow::Statistics); break;
    case KeyF12: mnuEndGame_Click(); break;
    case KeyH:
        if (GameRunning) board_->ShowHint();
        break;
    default: break;
    }
    // Every key counts towards the key word, the function keys too (their codes are those
    // of lower-case letters, as F4 is the code of "s"), and so does a key with no code.
    TypeKey(KeyCode);
}

void GameSession::TypeKey(std::int16_t KeyCode) {
    // A code outside one byte stands for no character and can match nothing.
    if (KeyCode < 0 || KeyCode > 255) {
        TypedKeys.clear();
        return;
    }
    TypedKeys += static_cast<char>(KeyCode);
    std::string typed = TypedKeys;
    for (char& c : typed) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    // A wrong key empties the text and is not taken as a new first letter.
    if (typed.size() > CheatKeyWord.size() || CheatKeyWord.compare(0, typed.size(), typed) != 0) {
        TypedKeys.clear();
        return;
    }
    if (typed.size() == CheatKeyWord.size()) {
        TypedKeys.clear();
        ChangeCheatMode();
    }
}

void GameSession::ChangeCheatMode() {
    game_.CheatMode = !game_.CheatMode;
    view_.ShowCheatMode(game_.CheatMode);
    if (!game_.CheatMode) {
        // Leaving the mode stops autoplay; the score of this game stays frozen.
        SetAutoplayChecked(false);
        return;
    }
    if (!KeepScoreInCheat) {
        Score = 0;
        UpdateScore(Score);
        services_.Hiscores.PrintHiScore(-1, 0, 0);
    }
    ScoreFrozen = true;
    if (settings_.PlaySounds) PlayDataWave("1.wav");
}

void GameSession::mnuLevList_Click(std::int16_t Index) {
    // The list has one entry per level. Jumping starts a game if none runs; score, spells
    // and the frozen state carry over.
    if (Index < 0 || Index >= MaxLevels) return;
    board_->JumpToLevel(static_cast<std::int16_t>(Index + 1));
    GameRunning = true;
}

void GameSession::mnuPlaySound_Click() {
    // Any number, played whatever the sound setting says; an answer that is no number, or
    // Cancel, asks for 0.wav. A fraction stays in the name as the number reads.
    const std::string answer = platform_.Dialog.InputBox("SOUND:", std::string(GameTitle), "");
    platform_.Sound.PlayWave(AppPath() + "data\\" + NumberText(Val(answer)) + ".wav", false);
}

void GameSession::mnuAutoplay_Click() {
    if (GameRunning) {
        SetAutoplayChecked(!AutoplayChecked);
        AutoPlay();
        return;
    }
    // No game: nothing happens, and the entry keeps the mark it had.
    view_.ShowAutoplayChecked(AutoplayChecked);
}

bool GameSession::AskNumber(const std::string& prompt, double limit, const std::string& tooBig, double& value) {
    for (;;) {
        const std::string answer = platform_.Dialog.InputBox(prompt, std::string(GameTitle), "");
        if (answer.empty()) return false;
        value = Val(answer);
        if (value <= limit) return true;
        platform_.Dialog.MessageBox(tooBig, std::string(GameTitle), MessageIcon::Exclamation, MessageButtons::Ok);
    }
}

void GameSession::GiveBonus_Click() {
    // The bonus screen with numbers of the tester's choice. Its points go through NewScore
    // like any others, so a frozen score stays frozen; no level ends.
    double bonus = 0;
    double times = 0;
    if (!AskNumber("BONUS:", MaxGivenBonus, "Can't be bigger than 100'000 !", bonus)) return;
    if (!AskNumber("X TIMES:", MaxGivenTimes, "Can't multiply by more than 99 !", times)) return;
    board_->ShowBonusMovie(bonus, CInt(times));
}

bool GameSession::PCSPEAKERENABLED_Click() {
    SpeakerEnabled = !SpeakerEnabled;
    return SpeakerEnabled;
}

// ---- the board's events ------------------------------------------------------------------------

void GameSession::BricksRemoved(std::int16_t) { UpdateScore(Score); }

void GameSession::MouseMove(std::int16_t xIndex, std::int16_t yIndex) {
    const std::int16_t type = board_ != nullptr ? board_->GetBrick(xIndex, yIndex) : 0;
    view_.SetLabel(SessionLabel::Pointer,
                   "X:" + NumberText(xIndex) + ",Y:" + NumberText(yIndex) + "  TYPE:" + NumberText(type));
}

void GameSession::GameOver() {
    if (AutoplayChecked) {
        // Autoplay runs on through the set: a dead end is cleared away like a level.
        if (SpeakerEnabled) SpeakerEvent(0);
        AutoClearing = true;
        board_->ClearRestOfBoardNow();
        return;
    }
    GameRunning = false;
    if (!SilentGameOver)
        platform_.Dialog.MessageBox("G A M E   O V E R !", "YOU DID WHAT YOU COULD ?!", MessageIcon::Information,
                                    MessageButtons::Ok);
    SetAutoplayChecked(false);
    OfferScoreToTable();
    view_.ShowStandardBackground();
    if (settings_.MakeStat && game_.CurLevelNo > 0) {
        LevelTally tally{LevelClicks, SpellClicks};
        services_.Stats.WriteStat(game_.CurLevelNo, true, IsDefaultSet, tally);
        LevelClicks = tally.LevelClicks;
        SpellClicks = tally.SpellClicks;
    }
}

void GameSession::NewScore(double point) {
    services_.Idle.RestartIdle();
    if (!ScoreFrozen || KeepScoreInCheat) Score += point;
    UpdateScore(Score);
    // A practice game takes no place, so none is marked for it.
    const std::int16_t place = practice_ ? -1 : services_.Hiscores.CheckHiscorePlace(Score);
    if (place > 0) services_.Hiscores.PrintHiScore(place, Red, 0);
}

void GameSession::PlayDataWave(const std::string& name) {
    platform_.Sound.PlayWave(AppPath() + "data\\" + name);
}

void GameSession::NewSpell(std::int16_t spellNumber) {
    if (!ValidSpell(spellNumber)) return;
    SpellStock[static_cast<std::size_t>(spellNumber)] += 1;
    UpdateSpells();
    if (!soundTimer_->Enabled() && settings_.PlaySounds) PlayDataWave("9.wav");
    soundTimer_->SetEnabled(true);
    platform_.Loop.DoEvents();
}

void GameSession::ShowClicks() {
    std::string text = "CLICKS: " + NumberText(LevelClicks);
    if (IsDefaultSet && ClickTarget >= 0) text += " / " + NumberText(ClickTarget);
    view_.SetLabel(SessionLabel::Clicks, text);
}

void GameSession::ReadClickTarget(std::int16_t levelNo) {
    // Any stored number is shown as the target, even a negative one edited in by hand;
    // the count after a click compares only with a target of 0 or more.
    const auto target = IsDefaultSet ? services_.Stats.ClickTarget(levelNo) : std::nullopt;
    ClickTarget = target.value_or(-1);
    view_.SetLabel(SessionLabel::Clicks, target ? "CLICKS: 0 / " + NumberText(*target) : "CLICKS: 0");
}

void GameSession::NewLevel(std::int16_t levelNo) {
    if (levelNo >= 1 && levelNo <= MaxLevels)
        view_.SetLabel(SessionLabel::LevelName, game_.Levels[static_cast<std::size_t>(levelNo - 1)].LevelName);
    if (IsDefaultSet && levelNo >= 2)
        view_.SetLabel(SessionLabel::LevelCode, "LEVEL-CODE:" + LevelCodes::CodeOf(levelNo));
    view_.SetLabel(SessionLabel::Level, NumberText(levelNo));

    // The level just left is logged now that the next one begins; a resumed game left
    // none.
    if (resuming_) {
        LevelClicks = 0;
    } else if (levelNo < 2 && LastLevel != 100) {
        LevelClicks = 0;
    } else if (!settings_.MakeStat) {
        LevelClicks = 0;
    } else {
        LevelTally tally{LevelClicks, SpellClicks};
        const std::int16_t logged = LastLevel == 100 ? std::int16_t{100} : static_cast<std::int16_t>(levelNo - 1);
        services_.Stats.WriteStat(logged, false, IsDefaultSet, tally);
        LevelClicks = tally.LevelClicks;
        SpellClicks = tally.SpellClicks;
    }
    LastLevel = levelNo;
    ReadClickTarget(levelNo);
    AutoClearing = false;
}

void GameSession::SpellUsed(std::int16_t spellNumber) {
    if (ValidSpell(spellNumber)) SpellStock[static_cast<std::size_t>(spellNumber)] -= 1;
    game_.ActiveSpell = NoSpell;
    UpdateSpells();
}

void GameSession::BonusScore(double bonus, std::int16_t xTimes) {
    if (game_.CheatMode && !AutoClearing && SpeakerEnabled)
        SpeakerEvent(LastClickCount > ClickTarget ? 1 : 3);
    view_.SetLabel(SessionLabel::Bonus, NumberText(xTimes));
    platform_.Loop.DoEvents();
    if (bonus == 0) return;
    if (xTimes > 0) {
        const std::int16_t sound = xTimes == 9 ? 10 : static_cast<std::int16_t>(11 + CInt(platform_.Rng.Next() * 2));
        if (settings_.ShowBonusCounter) {
            if (settings_.PlaySounds) PlayDataWave(NumberText(sound) + ".wav");
            board_->ShowBonusMovie(bonus, xTimes);
        } else {
            NewScore(xTimes * bonus);
        }
    }
    view_.SetLabel(SessionLabel::Bonus, "0");
}

void GameSession::BonusTimes(std::int16_t bonusTimesNow) {
    view_.SetLabel(SessionLabel::Bonus, NumberText(bonusTimesNow));
}

void GameSession::CanDoNextMove() {
    if (!AutoplayChecked) return;
    platform_.Loop.DoEvents();
    // Inside a move the next one waits until that move's click has returned.
    if (autoPlayDepth_ > 0) {
        nextMoveDue_ = true;
        return;
    }
    AutoPlay();
}

void GameSession::ResourceLoaded(const std::string& resource) { view_.ShowLoadingText(resource); }

void GameSession::SpellInUse(bool inUse) { game_.NoSpellBusy = !inUse; }

void GameSession::RemoveClick(std::int16_t) {
    LevelClicks += 1;
    LastClickCount = LevelClicks;
    ShowClicks();
}

void GameSession::SpellClick(std::int16_t spellNumber, std::int16_t) {
    if (ValidSpell(spellNumber)) SpellClicks[static_cast<std::size_t>(spellNumber)] += 1;
}

} // namespace tolva
